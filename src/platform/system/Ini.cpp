#include "platform/system/Ini.h"

#include <QFile>
#include <QList>
#include <optional>

#include "platform/basic/Digits.h"
#include "platform/basic/Text.h"
#include "platform/system/Files.h"

namespace tarmel::sys {

namespace {

/// A line with its own line end, so that what is not changed is written back as it was.
using Lines = QList<QByteArray>;

const QByteArray lineEnd = QByteArrayLiteral("\r\n");

std::optional<QByteArray> readFile(const QString& path) {
    QFile file(actualPath(path).value_or(path));
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return file.readAll();
}

Lines linesOf(const QByteArray& bytes) {
    Lines lines;
    for (qsizetype from = 0; from < bytes.size();) {
        const qsizetype newline = bytes.indexOf('\n', from);
        const qsizetype end = newline < 0 ? bytes.size() : newline + 1;
        lines.append(bytes.sliced(from, end - from));
        from = end;
    }
    return lines;
}

QString textOf(const QByteArray& line) {
    return basic::fromAnsi(line).trimmed();
}

bool same(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool isSectionHead(const QString& text) {
    return text.startsWith(u'[');
}

bool isHeadOf(const QString& text, const QString& section) {
    const qsizetype end = text.indexOf(u']');
    return isSectionHead(text) && end > 0 && same(text.sliced(1, end - 1).trimmed(), section);
}

/// The name in front of "="; empty on comments and lines without one.
QString keyOf(const QString& text) {
    const qsizetype equals = text.indexOf(u'=');
    return equals < 0 || text.startsWith(u';') ? QString() : text.first(equals).trimmed();
}

QString valueOf(const QString& text) {
    const QString value = text.sliced(text.indexOf(u'=') + 1).trimmed();
    const bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                        value.back() == value.front();
    return quoted ? value.sliced(1, value.size() - 2) : value;
}

/// Where a key stands, or would be entered. Indexes of lines, -1 where there is none.
struct Place {
    qsizetype head = -1;
    qsizetype key = -1;
    qsizetype behindLast = -1;  // behind the section's last line that is not blank
};

Place find(const Lines& lines, const QString& section, const QString& key) {
    Place place;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString text = textOf(lines[i]);
        if (place.head < 0) {
            if (!isHeadOf(text, section)) continue;
            place.head = i;
            place.behindLast = i + 1;
            continue;
        }
        if (isSectionHead(text)) break;
        if (!text.isEmpty()) place.behindLast = i + 1;
        if (!same(keyOf(text), key)) continue;
        place.key = i;
        break;
    }
    return place;
}

/// Digits beyond the range of the number fall out at the top, as the desktop platform's reader lets them.
int leadingNumber(const QString& value) {
    qsizetype place = 0;
    const bool negative = value.startsWith(u'-');
    if (negative || value.startsWith(u'+')) ++place;
    quint32 number = 0;
    for (; place < value.size() && basic::isDigit(value[place]); ++place) {
        number = number * 10 + (value[place].unicode() - u'0');
    }
    return static_cast<int>(negative ? 0u - number : number);
}

bool breaksLine(const QString& text) {
    return text.contains(u'\n') || text.contains(u'\r') || text.contains(u'\0');
}

/// Whether a name that is written is found again: the code page has its letters, and nothing is trimmed away.
bool isName(const QString& name) {
    return !name.isEmpty() && name.trimmed() == name && basic::fromAnsi(basic::toAnsi(name)) == name;
}

/// A line that begins so is a comment or a section's head.
bool isKey(const QString& name) {
    return isName(name) && !name.startsWith(u';') && !name.startsWith(u'[') && !name.contains(u'=');
}

/// Gives the line in front of a new one its end, which the file's last line may lack.
void endLineBefore(Lines& lines, qsizetype place) {
    if (place > 0 && !lines[place - 1].endsWith('\n')) lines[place - 1] += lineEnd;
}

}  // namespace

int readInt(const QString& path, const QString& section, const QString& key, int missing) {
    const std::optional<QByteArray> bytes = readFile(path);
    if (!bytes) return missing;
    const Lines lines = linesOf(*bytes);
    const Place place = find(lines, section, key);
    return place.key < 0 ? missing : leadingNumber(valueOf(textOf(lines[place.key])));
}

bool writeText(const QString& path, const QString& section, const QString& key, const QString& value) {
    const bool named = isName(section) && !section.contains(u']') && isKey(key);
    if (!named || breaksLine(section + key + value)) return false;
    const std::optional<QByteArray> bytes = readFile(path);
    if (!bytes && exists(path)) return false;  // there, but not readable: its other lines would be lost

    Lines lines = linesOf(bytes.value_or(QByteArray()));
    const Place place = find(lines, section, key);
    const QString name = place.key < 0 ? key : keyOf(textOf(lines[place.key]));
    const QByteArray line = basic::toAnsi(name + u'=' + value) + lineEnd;
    if (place.key >= 0) {
        lines[place.key] = line;
    } else if (place.head >= 0) {
        endLineBefore(lines, place.behindLast);
        lines.insert(place.behindLast, line);
    } else {
        endLineBefore(lines, lines.size());
        lines << basic::toAnsi(u'[' + section + u']') + lineEnd << line;
    }
    return basic::resumeNext([&] { writeWhole(path, lines.join()); });
}

}  // namespace tarmel::sys
