#pragma once

#include <QString>
#include <exception>

namespace tarmel::basic {

/// What the platform reports when an operation cannot be carried out: the runtime's own failures (5, 6, 13,
/// 94 ...) and those of the database engine. The one exception type that carries an error.
class RuntimeError : public std::exception {
 public:
    /// A runtime error with its fixed Spanish text and the program's name as its source.
    explicit RuntimeError(int number);
    RuntimeError(int number, QString description, QString source);

    [[nodiscard]] int number() const noexcept { return number_; }
    [[nodiscard]] const QString& description() const noexcept { return description_; }
    [[nodiscard]] const QString& source() const noexcept { return source_; }
    [[nodiscard]] const char* what() const noexcept override { return utf8_.c_str(); }

 private:
    int number_;
    QString description_;
    QString source_;
    std::string utf8_;
};

/// Numbers that callers test for.
namespace error {
inline constexpr int InvalidCall = 5;
inline constexpr int Overflow = 6;
inline constexpr int Subscript = 9;
inline constexpr int TypeMismatch = 13;
inline constexpr int BadFileName = 52;
inline constexpr int FileNotFound = 53;
inline constexpr int FileOpen = 55;
inline constexpr int FileExists = 58;
inline constexpr int DiskFull = 61;
inline constexpr int PastEndOfFile = 62;
inline constexpr int PermissionDenied = 70;
inline constexpr int FileAccess = 75;
inline constexpr int PathNotFound = 76;
inline constexpr int ObjectNotSet = 91;
inline constexpr int InvalidNull = 94;
inline constexpr int NoCurrentRecord = 3021;
inline constexpr int ItemNotFound = 3265;
inline constexpr int ObjectClosed = 3704;
inline constexpr int ConnectionClosed = 3709;
inline constexpr int Statement = -2147217900;
}  // namespace error

/// The runtime's Spanish text of an error number; empty for numbers that are not the runtime's.
[[nodiscard]] QString errorText(int number);

/// Runs `step` and forgets a RuntimeError: one statement under "resume at the next". True when it went
/// through.
template <typename Step>
bool resumeNext(Step&& step) {
    try {
        step();
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace tarmel::basic
