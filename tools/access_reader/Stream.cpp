#include "Stream.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace access_reader {

namespace {

constexpr std::size_t kBuffer = 1 << 16;
std::FILE* output = nullptr;

}  // namespace

bool claimOutput() {
    static char buffer[kBuffer];
    const int kept = ::dup(STDOUT_FILENO);
    const int nothing = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (kept < 0 || nothing < 0 || ::dup2(nothing, STDOUT_FILENO) < 0) return false;
    ::close(nothing);
    output = ::fdopen(kept, "wb");
    return output != nullptr && std::setvbuf(output, buffer, _IOFBF, sizeof buffer) == 0;
}

void send(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), output) != bytes.size()) std::_Exit(EXIT_FAILURE);
}

bool flush() {
    return std::fflush(output) == 0 && std::ferror(output) == 0;
}

void appendEscaped(std::string& to, std::string_view utf8) {
    for (const char c : utf8) {
        switch (c) {
            case '\\':
                to += "\\\\";
                break;
            case '\t':
                to += "\\t";
                break;
            case '\n':
                to += "\\n";
                break;
            case '\0':
                to += "\\0";
                break;
            default:
                to += c;
        }
    }
}

void appendHex(std::string& to, const unsigned char* bytes, std::size_t count) {
    constexpr char digits[] = "0123456789abcdef";
    for (std::size_t i = 0; i < count; ++i) {
        to += digits[bytes[i] >> 4];
        to += digits[bytes[i] & 15];
    }
}

Line& Line::text(std::string_view utf8) {
    text_ += '\t';
    appendEscaped(text_, utf8);
    return *this;
}

Line& Line::number(long long value) {
    text_ += '\t';
    text_ += std::to_string(value);
    return *this;
}

Line& Line::plain(std::string_view field) {
    text_ += '\t';
    text_ += field;
    return *this;
}

void Line::send() {
    text_ += '\n';
    access_reader::send(text_);
}

}  // namespace access_reader
