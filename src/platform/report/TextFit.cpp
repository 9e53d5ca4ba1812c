#include "platform/report/TextFit.h"

#include <algorithm>
#include <utility>

namespace tarmel::report {

namespace {

constexpr QChar kCutMark = u'…';

/// How many of the first characters fit; a pair of surrogates stays together.
qsizetype fitting(const QString& text, double width, const TextMeasure& measure, const Font& font) {
    qsizetype fits = 0;
    qsizetype beyond = text.size() + 1;
    while (beyond - fits > 1) {
        const qsizetype middle = (fits + beyond) / 2;
        (measure.width(text.left(middle), font) <= width ? fits : beyond) = middle;
    }
    if (fits > 0 && fits < text.size() && text.at(fits).isLowSurrogate()) --fits;
    return fits;
}

/// The text with the mark behind it, shortened until both fit.
QString marked(const QString& text, double width, const TextMeasure& measure, const Font& font) {
    const double room = width - measure.width(QString(kCutMark), font);
    QString kept = text.left(room > 0 ? fitting(text, room, measure, font) : 0);
    while (kept.endsWith(u' '))
        kept.chop(1);
    return kept + kCutMark;
}

bool hasBreaks(const QString& text) {
    return std::ranges::any_of(text, [](QChar c) { return c == u'\r' || c == u'\n' || c == u'\t'; });
}

QStringList paragraphs(QString text) {
    if (!hasBreaks(text)) return {text};
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    text.replace(u'\t', u' ');
    QStringList all = text.split(u'\n');
    // Empty lines at either end say nothing on paper.
    while (all.size() > 1 && all.first().isEmpty())
        all.removeFirst();
    while (all.size() > 1 && all.last().isEmpty())
        all.removeLast();
    return all;
}

/// Takes the first line off the text.
QString takeLine(QString& rest, double width, const TextMeasure& measure, const Font& font) {
    const qsizetype fits = fitting(rest, width, measure, font);
    if (fits == rest.size()) return std::exchange(rest, QString());
    qsizetype end = rest.at(fits) == u' ' ? fits : rest.lastIndexOf(u' ', fits);
    // At least one character a line, or a narrow place would never come to an end.
    if (end <= 0) end = std::max<qsizetype>(fits, 1);
    QString line = rest.left(end);
    while (line.endsWith(u' '))
        line.chop(1);
    while (end < rest.size() && rest.at(end) == u' ')
        ++end;
    rest = rest.mid(end);
    return line;
}

}  // namespace

QString cutLine(const QString& text, double width, const TextMeasure& measure, const Font& font) {
    const QString line = (hasBreaks(text) ? paragraphs(text).join(u' ') : text).trimmed();
    if (line.isEmpty() || measure.width(line, font) <= width) return line;
    return marked(line, width, measure, font);
}

QStringList wrapLines(const QString& text, double width, int most, const TextMeasure& measure,
                      const Font& font) {
    QStringList lines;
    const QStringList all = paragraphs(text);
    for (qsizetype i = 0; i < all.size(); ++i) {
        QString rest = all.at(i);
        do {
            const QString whole = rest;
            lines << takeLine(rest, width, measure, font);
            const bool more = !rest.isEmpty() || i + 1 < all.size();
            if (most <= 0 || lines.size() < most || !more) continue;
            lines.last() = marked(rest.isEmpty() ? lines.last() : whole, width, measure, font);
            return lines;
        } while (!rest.isEmpty());
    }
    return lines;
}

}  // namespace tarmel::report
