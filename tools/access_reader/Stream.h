#pragma once

#include <string>
#include <string_view>

/// What the reader tells, line by line on standard output; see src/database/FlujoAccess.h for the lines.
namespace access_reader {

/// A failure that ends the reading. `table` is empty where none is concerned.
struct Failure {
    std::string table;
    std::string words;  ///< Spanish, for the user
};

/// One line of fields between tabs.
class Line {
 public:
    explicit Line(char kind) : text_(1, kind) {}
    /// Text with the signs that frame lines and fields escaped.
    Line& text(std::string_view utf8);
    Line& number(long long value);
    /// A field that needs no escaping.
    Line& plain(std::string_view field);
    void send();

 private:
    std::string text_;
};

/// Keeps the standard output for the lines: what the library prints there of a damaged file goes nowhere.
[[nodiscard]] bool claimOutput();
/// Ends the process when nobody reads any more.
void send(std::string_view bytes);
/// Everything has been handed over; false when it could not be.
[[nodiscard]] bool flush();

void appendEscaped(std::string& to, std::string_view utf8);
void appendHex(std::string& to, const unsigned char* bytes, std::size_t count);
}  // namespace access_reader
