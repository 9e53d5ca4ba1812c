#include "platform/report/HtmlExport.h"

#include <QIODevice>
#include <algorithm>

#include "platform/basic/RuntimeError.h"
#include "platform/report/Layout.h"

using namespace Qt::StringLiterals;

namespace tarmel::report {

namespace {

constexpr int kRowsAStep = 200;
constexpr double kSameLine = 1.0;  // mm between the tops of texts that stand in one line

constexpr QLatin1String kTitleMark("<!--MSDBRPT_Template_Title-->");
constexpr QLatin1String kBodyMark("<!--MSDBRPT_Template_Body-->");

bool isText(const Element& element) {
    using Kind = Element::Kind;
    const bool isOfItsPage = element.source.contains(u"%p"_s, Qt::CaseInsensitive);
    return element.kind == Kind::Label || element.kind == Kind::Field || element.kind == Kind::Sum ||
           (element.kind == Kind::PageText && !isOfItsPage);
}

/// For a place between tags or in an attribute.
QString escaped(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    return text.toHtmlEscaped().replace(u'\n', QLatin1String("<BR>"));
}

/// ASCII alone: all else as references.
QByteArray ascii(const QString& text) {
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const uint code : text.toUcs4()) {
        if (code < 128) {
            bytes += static_cast<char>(code);
        } else {
            bytes += "&#" + QByteArray::number(code) + ';';
        }
    }
    return bytes;
}

double overlap(const Box& a, const Box& b) {
    return std::min(a.right(), b.right()) - std::max(a.left, b.left);
}

using Elements = std::vector<const Element*>;

/// The texts of a section, line by line from the top, each from the left.
std::vector<Elements> linesOf(const Section& section) {
    Elements all;
    for (const Element& element : section.elements) {
        if (isText(element)) all.push_back(&element);
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Element* a, const Element* b) { return a->place.top < b->place.top; });
    std::vector<Elements> lines;
    for (const Element* element : all) {
        if (lines.empty() || element->place.top - lines.back().front()->place.top > kSameLine)
            lines.emplace_back();
        lines.back().push_back(element);
    }
    for (Elements& line : lines) {
        std::stable_sort(line.begin(), line.end(),
                         [](const Element* a, const Element* b) { return a->place.left < b->place.left; });
    }
    return lines;
}

}  // namespace

struct HtmlExport::State {
    State(Document& shown, const ExportFormat& format, QIODevice& device,
          std::function<QByteArray(const QString&)> pictures)
        : document(shown), report(shown.report()), out(device), picture(std::move(pictures)) {
        rows = document.rowCount();
        groups = document.groupCount();
        isGrouped = !report.groupBy.isEmpty();
        for (const Elements& line : linesOf(report.detail))
            columns.insert(columns.end(), line.begin(), line.end());
        QString text = format.templateText;
        text.replace(kTitleMark, escaped(report.title));
        const qsizetype mark = text.indexOf(kBodyMark);
        head = mark < 0 ? text : text.left(mark);
        tail = mark < 0 ? QString() : text.mid(mark + kBodyMark.size());
        hasBody = mark >= 0;
    }

    void write(const QString& text) {
        const QByteArray bytes = ascii(text);
        if (out.write(bytes) != bytes.size()) throw basic::RuntimeError(basic::error::DiskFull);
    }

    [[nodiscard]] QString textOf(const Element& element, int row, int group) {
        if (element.kind == Element::Kind::Label) return element.source;
        if (element.kind == Element::Kind::PageText) return withPageCodes(element.source, {}, {});
        if (element.kind == Element::Kind::Field)
            return row < 0 ? QString() : document.valueText(element, row);
        return group < 0 ? document.totalSum(element.source) : document.groupSum(element.source, group);
    }

    /// The column that a text stands over or under; -1 where it stands over several or none.
    [[nodiscard]] int columnOf(const Element& element) const {
        int best = -1;
        double most = 0.5;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const double shared = overlap(element.place, columns[i]->place);
            if (shared <= most) continue;
            best = static_cast<int>(i);
            most = shared;
        }
        return best;
    }

    [[nodiscard]] QString cell(const QString& tag, Align align, const QString& text) const {
        const QString right = align == Align::Right ? u" ALIGN=\"right\""_s : u""_s;
        return u"<%1%2>%3</%1>"_s.arg(tag, right, text.isEmpty() ? u"&nbsp;"_s : text);
    }

    /// A line of titles or sums as a row of the table.
    [[nodiscard]] QString tableLine(const Elements& line, const QString& tag, int row, int group) {
        QStringList texts(static_cast<qsizetype>(columns.size()));
        for (const Element* element : line) {
            const int column = std::max(0, columnOf(*element));
            const QString text = escaped(textOf(*element, row, group));
            if (text.isEmpty()) continue;
            texts[column] += (texts[column].isEmpty() ? u""_s : u" "_s) + text;
        }
        QString cells;
        for (std::size_t i = 0; i < columns.size(); ++i)
            cells += cell(tag, columns[i]->align, texts[static_cast<qsizetype>(i)]);
        return u"<TR>"_s + cells + u"</TR>\r\n"_s;
    }

    /// A line that stands over or under the tables.
    [[nodiscard]] QString paragraph(const Elements& line, int row, int group) {
        QStringList texts;
        for (const Element* element : line) {
            const QString text = escaped(textOf(*element, row, group));
            if (text.isEmpty()) continue;
            texts << (element->isBold ? u"<B>%1</B>"_s.arg(text) : text);
        }
        return texts.isEmpty() ? QString() : u"<P>%1</P>\r\n"_s.arg(texts.join(u' '));
    }

    [[nodiscard]] QString paragraphs(const Section& section, int row, int group) {
        QString all;
        for (const Elements& line : linesOf(section))
            all += paragraph(line, row, group);
        return all;
    }

    /// The last line of a section with titles is the table's; what stands above it stands above the table.
    [[nodiscard]] QString tableHead(const Section& titles, int row, int group) {
        std::vector<Elements> lines = linesOf(titles);
        QString above, head_;
        if (!lines.empty()) {
            head_ = tableLine(lines.back(), u"TH"_s, row, group);
            lines.pop_back();
        }
        for (const Elements& line : lines)
            above += paragraph(line, row, group);
        return above + u"<TABLE BORDER=\"1\" CELLSPACING=\"0\" CELLPADDING=\"3\">\r\n"_s + head_;
    }

    [[nodiscard]] QString tableFoot(const Section& sums, int row, int group) {
        QString all;
        for (const Elements& line : linesOf(sums))
            all += tableLine(line, u"TD"_s, row, group);
        return all;
    }

    [[nodiscard]] QString reportHead() {
        QString all;
        for (const Element& element : report.reportHeader.elements) {
            if (element.kind != Element::Kind::Image) continue;
            const QByteArray svg = picture ? picture(element.source) : QByteArray();
            if (svg.isEmpty()) continue;
            all += u"<IMG ALT=\"\" HEIGHT=\"80\" SRC=\"data:image/svg+xml;base64,%1\">\r\n"_s.arg(
                QString::fromLatin1(svg.toBase64()));
        }
        return all + paragraphs(report.reportHeader, -1, -1);
    }

    void begin() {
        write(head);
        if (!hasBody) {
            finished = true;
            return;
        }
        write(reportHead());
        if (isGrouped) {
            write(paragraphs(report.pageHeader, -1, -1));
        } else {
            write(tableHead(report.pageHeader, -1, -1));
        }
    }

    void rowsOfGroup() {
        const std::vector<int>& all = document.groupRows(current);
        const int first = all.front();
        if (next == 0 && isGrouped)
            write(paragraphs(report.groupHeader, first, current) +
                  tableHead(report.groupTitles, first, current));
        const int begin = next;
        const int end = std::min(static_cast<int>(all.size()), next + kRowsAStep);
        QString text;
        for (; next < end; ++next) {
            QString cells;
            for (const Element* column : columns)
                cells += cell(u"TD"_s, column->align,
                              escaped(textOf(*column, all[static_cast<std::size_t>(next)], -1)));
            text += u"<TR>"_s + cells + u"</TR>\r\n"_s;
        }
        if (next == static_cast<int>(all.size())) {
            if (isGrouped) text += tableFoot(report.groupFooter, first, current) + u"</TABLE>\r\n"_s;
            ++current;
            next = 0;
        }
        write(text);
        written += end - begin;
    }

    void end() {
        const QString sums = tableFoot(report.reportFooter, -1, -1);
        if (isGrouped && !sums.isEmpty()) {
            write(u"<TABLE BORDER=\"1\" CELLSPACING=\"0\" CELLPADDING=\"3\">\r\n"_s + sums +
                  u"</TABLE>\r\n"_s);
        } else if (!isGrouped) {
            write(sums + u"</TABLE>\r\n"_s);
        }
        write(tail);
        finished = true;
    }

    Document& document;
    const Report& report;
    QIODevice& out;
    std::function<QByteArray(const QString&)> picture;
    QString head, tail;
    Elements columns;
    int rows = 0;
    int groups = 0;
    int current = 0;
    int next = 0;  ///< of the group's rows
    int written = 0;
    bool isGrouped = false;
    bool hasBody = true;
    bool begun = false;
    bool finished = false;
};

HtmlExport::HtmlExport(Document& document, const ExportFormat& format, QIODevice& out,
                       std::function<QByteArray(const QString&)> picture)
    : state_(std::make_unique<State>(document, format, out, std::move(picture))) {}

HtmlExport::~HtmlExport() = default;

bool HtmlExport::step() {
    if (!std::exchange(state_->begun, true)) {
        state_->begin();
    } else if (state_->current < state_->groups) {
        state_->rowsOfGroup();
    } else if (!state_->finished) {
        state_->end();
    }
    return !state_->finished;
}

double HtmlExport::progress() const {
    if (state_->finished) return 1;
    return state_->rows == 0 ? 0 : std::min(1.0, static_cast<double>(state_->written) / state_->rows);
}

}  // namespace tarmel::report
