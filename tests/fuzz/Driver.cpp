// Runs a fuzz target without a fuzzer: every file of a folder of seeds, then rounds of mutations of them. The
// same seed number gives the same inputs. While an input runs it lies in the file "<target>.input", which
// stays behind when the target crashes, aborts or hangs; given as an argument, that file is run alone.

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

constexpr unsigned kSecondsForOne = 30;
constexpr std::size_t kUsualBytes = 4096;
constexpr std::size_t kMostBytes = 1 << 17;  // a rare long one, beyond what the readers accept in a line

struct Options {
    std::uint64_t rounds = 0;
    std::uint64_t seed = 1;
    fs::path inputs;
};

std::optional<Options> optionsOf(const std::vector<std::string_view>& words) {
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool rounds = words[i] == "--rounds";
        if (!rounds && words[i] != "--seed") {
            if (!options.inputs.empty()) return std::nullopt;
            options.inputs = words[i];
            continue;
        }
        if (++i == words.size()) return std::nullopt;
        const char* end = words[i].data() + words[i].size();
        const auto read = std::from_chars(words[i].data(), end, rounds ? options.rounds : options.seed);
        if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    }
    if (options.inputs.empty()) return std::nullopt;
    return options;
}

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// In the order of their names, so that a seed number means the same everywhere.
std::vector<fs::path> filesOf(const fs::path& inputs) {
    if (!fs::is_directory(inputs)) return {inputs};
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(inputs)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// A line of the fuzzers' dictionaries: "word", with \xNN for bytes.
std::optional<std::string> wordOf(const std::string& line) {
    if (line.size() < 3 || line.front() != '"' || line.back() != '"') return std::nullopt;
    std::string word;
    for (std::size_t i = 1; i + 1 < line.size(); ++i) {
        if (line[i] != '\\') {
            word += line[i];
        } else if (line[i + 1] == 'x') {
            word += static_cast<char>(std::stoi(line.substr(i + 2, 2), nullptr, 16));
            i += 3;
        } else {
            word += line[++i];
        }
    }
    return word;
}

/// The dictionary lies beside the folder of seeds.
std::vector<std::string> dictionaryOf(fs::path inputs) {
    if (!inputs.has_filename()) inputs = inputs.parent_path();
    std::ifstream file(inputs.replace_extension(".dict"));
    std::vector<std::string> words;
    for (std::string line; std::getline(file, line);) {
        if (const auto word = wordOf(line)) words.push_back(*word);
    }
    return words;
}

class Mutator {
 public:
    Mutator(std::vector<std::string> seeds, std::vector<std::string> words, std::uint64_t seed)
        : seeds_(std::move(seeds)), own_(seeds_.size()), words_(std::move(words)), random_(seed) {}

    std::string next() {
        // Half of the rounds begin with a seed: what was kept comes to be alike.
        std::string input = seeds_[below(below(2) == 0 ? own_ : seeds_.size())];
        do {
            mutate(input);
        } while (below(2) != 0);
        input.resize(std::min(input.size(), below(200) == 0 ? kMostBytes : kUsualBytes));
        return input;
    }

    /// Later rounds begin with this input too. The seeds themselves stay.
    void keep(std::string input) {
        if (input.size() > kUsualBytes) return;
        if (seeds_.size() < own_ + kKept)
            seeds_.push_back(std::move(input));
        else
            seeds_[own_ + below(kKept)] = std::move(input);
    }

 private:
    // No distribution of the library: they differ between libraries.
    std::size_t below(std::size_t bound) { return bound == 0 ? 0 : random_() % bound; }
    std::size_t place(const std::string& text) { return below(text.size() + 1); }
    const std::string& any(const std::vector<std::string>& texts) { return texts[below(texts.size())]; }
    char anyByte() { return static_cast<char>(below(256)); }

    std::string anyPiece(const std::string& text) {
        const std::size_t from = place(text);
        return text.substr(from, place(text.substr(from)));
    }

    void mutate(std::string& input) {
        switch (below(12)) {
            case 0:
                return flipBit(input);
            case 1:
                return setByte(input);
            case 2:
                input.insert(place(input), 1 + below(4), anyByte());
                return;
            case 3:
                return erase(input);
            case 4:
                input.insert(place(input), anyPiece(input));
                return;
            case 5:
                return repeat(input);
            case 6:
                return splice(input);
            case 7:
                input.insert(place(input), word());
                return;
            default:
                return replaceToken(input);
        }
    }

    /// One of the dictionary, or one that stands in some input.
    std::string word() {
        if (!words_.empty() && below(2) == 0) return any(words_);
        const std::string& text = any(seeds_);
        if (text.empty()) return std::string(1, anyByte());
        const auto [from, to] = tokenAt(text, below(text.size()));
        return text.substr(from, to - from);
    }

    /// The letters and digits around a place, or the one sign there.
    static std::pair<std::size_t, std::size_t> tokenAt(const std::string& text, std::size_t from) {
        const auto isWord = [](char c) {
            return (c & 0x80) != 0 || std::isalnum(static_cast<unsigned char>(c)) != 0;
        };
        std::size_t to = from + 1;
        while (from > 0 && isWord(text[from]) && isWord(text[from - 1]))
            --from;
        while (to < text.size() && isWord(text[from]) && isWord(text[to]))
            ++to;
        return {from, to};
    }

    void flipBit(std::string& input) {
        if (!input.empty()) input[below(input.size())] ^= static_cast<char>(1 << below(8));
    }
    void setByte(std::string& input) {
        if (!input.empty()) input[below(input.size())] = anyByte();
    }
    void erase(std::string& input) {
        const std::size_t from = place(input);
        input.erase(from, place(input.substr(from)));
    }
    /// A short piece many times: depth and length.
    void repeat(std::string& input) {
        const std::size_t from = place(input);
        const std::string piece = below(2) == 0 ? word() : input.substr(from, 1 + below(12));
        const std::size_t most = below(100) == 0 ? kMostBytes : 600;
        const std::size_t times = below(most / std::max<std::size_t>(1, piece.size()) + 1);
        std::string pieces;
        for (std::size_t i = 0; i < times; ++i)
            pieces += piece;
        input.insert(from, pieces);
    }
    void splice(std::string& input) {
        const std::string& other = any(seeds_);
        input = input.substr(0, place(input)) + other.substr(place(other));
    }
    /// A token gives way to a word, so that the rest still fits.
    void replaceToken(std::string& input) {
        if (input.empty()) return;
        const auto [from, to] = tokenAt(input, below(input.size()));
        input.replace(from, to - from, word());
    }

    static constexpr std::size_t kKept = 2000;
    std::vector<std::string> seeds_;
    std::size_t own_;  ///< how many of them were there from the beginning
    std::vector<std::string> words_;
    std::mt19937_64 random_;
};

/// Keeps the input that is running on disk, however the process ends.
class Record {
 public:
    explicit Record(std::string path) : path_(std::move(path)), file_(std::fopen(path_.c_str(), "wb")) {
        if (file_ == nullptr) std::perror(path_.c_str());
    }
    ~Record() {
        if (file_ != nullptr) std::fclose(file_);
        std::remove(path_.c_str());
    }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    void keep(const std::string& input) const {
        if (file_ == nullptr) return;
        const int descriptor = fileno(file_);
        const bool kept =
            ::ftruncate(descriptor, 0) == 0 && ::pwrite(descriptor, input.data(), input.size(), 0) >= 0;
        if (!kept) std::perror(path_.c_str());
    }

 private:
    std::string path_;
    std::FILE* file_;
};

/// Whether the input was accepted.
bool runOne(const std::string& input, const Record& record) {
    record.keep(input);
    ::alarm(kSecondsForOne);  // what hangs is ended by the signal
    const int result =
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    ::alarm(0);
    return result == 0;
}

}  // namespace

int main(int count, char** words) {
    const auto options = optionsOf({words + 1, words + count});
    const std::string name = fs::path(words[0]).filename().string();
    if (!options) {
        std::fprintf(stderr, "%s [--rounds N] [--seed S] FILE|FOLDER\n", name.c_str());
        return EXIT_FAILURE;
    }
    std::vector<std::string> seeds;
    for (const fs::path& file : filesOf(options->inputs))
        seeds.push_back(contentOf(file));
    if (seeds.empty()) {
        std::fprintf(stderr, "No seeds in %s\n", options->inputs.c_str());
        return EXIT_FAILURE;
    }

    const auto started = std::chrono::steady_clock::now();
    const bool single =
        !fs::is_directory(options->inputs);  // perhaps the record of an earlier run: not to be lost
    const Record record(single ? name + ".again" : name + ".input");
    for (const std::string& seed : seeds)
        runOne(seed, record);
    Mutator mutator(seeds, dictionaryOf(options->inputs), options->seed);
    unsigned long long accepted = 0;
    for (std::uint64_t round = 0; round < options->rounds; ++round) {
        std::string input = mutator.next();
        if (!runOne(input, record)) continue;
        ++accepted;
        mutator.keep(std::move(input));
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - started;
    std::printf("%s: %zu seeds and %llu mutations of them (%llu accepted), %.1f s\n", name.c_str(),
                seeds.size(), static_cast<unsigned long long>(options->rounds), accepted, seconds.count());
    return EXIT_SUCCESS;
}
