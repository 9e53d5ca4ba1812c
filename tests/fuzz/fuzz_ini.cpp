// Any bytes as an INI file. The input's first three lines are the section, the key and the value, the rest is
// the file.

#include <QTemporaryDir>

#include "fuzz/Expect.h"
#include "platform/basic/Text.h"
#include "platform/system/Ini.h"

namespace {

using namespace tarmel;

QByteArray takeLine(QByteArray& bytes) {
    const qsizetype newline = bytes.indexOf('\n');
    const QByteArray line = bytes.left(newline);
    bytes = newline < 0 ? QByteArray() : bytes.sliced(newline + 1);
    return line;
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    expect(file.open(QIODevice::ReadOnly), "the file is there");
    return file.readAll();
}

/// What is in front of and behind the line that was entered or changed was there before, byte for byte. The
/// file's last line may have been given its end.
bool othersStay(const QByteArray& before, const QByteArray& after) {
    qsizetype front = 0;
    while (front < before.size() && front < after.size() && before[front] == after[front])
        ++front;
    qsizetype back = 0;
    while (back < before.size() - front && back < after.size() - front &&
           before[before.size() - 1 - back] == after[after.size() - 1 - back])
        ++back;
    const QByteArray gone = before.sliced(front, before.size() - front - back);
    return gone.isEmpty() || gone.indexOf('\n') < 0 || gone.indexOf('\n') == gone.size() - 1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("Tarmel.INI"));
    QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString section = basic::fromAnsi(takeLine(bytes));
    const QString key = QString::fromUtf8(takeLine(bytes));
    const QString value = QString::fromUtf8(takeLine(bytes));
    QFile file(path);
    file.remove();
    expect(file.open(QIODevice::WriteOnly), "the file can be made");
    file.write(bytes);
    file.close();

    constexpr int missing = -4711, number = 2010;
    const QString text = QString::number(number);
    const int before = sys::readInt(path, section, key, missing);
    if (!sys::writeText(path, section, key, text)) {
        expect(contentOf(path) == bytes, "a refusal leaves the file as it was");
        return -1;
    }
    const QByteArray written = contentOf(path);
    expect(othersStay(bytes, written), "all other lines stay", basic::fromAnsi(written));
    expect(sys::readInt(path, section, key, missing) == number, "what was written is read",
           basic::fromAnsi(written));
    expect(sys::writeText(path, section, key, text) && contentOf(path) == written,
           "writing it again changes nothing", basic::fromAnsi(written));
    const bool added =
        written.count('\n') > bytes.count('\n') + (bytes.endsWith('\n') || bytes.isEmpty() ? 0 : 1);
    expect(before == missing || !added, "a key that was there is not entered again",
           basic::fromAnsi(written));

    // Any value: it may be refused, and is otherwise one line.
    if (sys::writeText(path, section, key, value))
        expect(contentOf(path).count('\n') == written.count('\n'), "a value stays within its line", value);
    return 0;
}
