#include "platform/report/Layout.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/basic/Date.h"
#include "platform/basic/Text.h"
#include "platform/report/TextFit.h"

namespace tarmel::report {

namespace {

constexpr double kHair = 0.001;     // mm: what sums of millimetres may be off by
constexpr double kPadding = 0.5;    // mm between a text and the sides of its place
constexpr double kGap = 1;          // mm that stay between what grows and what stands below it
constexpr int kRowsTogether = 2;    // a group's header is followed by so many of its rows
constexpr double kBandFill = 0.05;  // of each second row

bool isText(const Element& element) {
    using Kind = Element::Kind;
    return element.kind == Kind::Label || element.kind == Kind::Field || element.kind == Kind::Sum ||
           element.kind == Kind::PageText;
}

bool grows(const Section& section) {
    return std::any_of(section.elements.begin(), section.elements.end(),
                       [](const Element& e) { return e.fit == Fit::Grow; });
}

QString dateInWords(basic::Date date) {
    static constexpr std::array kDays{u"domingo", u"lunes",   u"martes", u"miércoles",
                                      u"jueves",  u"viernes", u"sábado"};
    static constexpr std::array kMonths{u"enero",      u"febrero", u"marzo",     u"abril",
                                        u"mayo",       u"junio",   u"julio",     u"agosto",
                                        u"septiembre", u"octubre", u"noviembre", u"diciembre"};
    // Day 1 of the count was a Sunday.
    const auto days = static_cast<qint64>(std::floor(date.serial()));
    const auto weekday = static_cast<std::size_t>(((days - 1) % 7 + 7) % 7);
    return QStringLiteral("%1, %2 de %3 de %4")
        .arg(QString::fromUtf16(kDays[weekday]))
        .arg(date.day())
        .arg(QString::fromUtf16(kMonths[static_cast<std::size_t>(date.month() - 1)]))
        .arg(date.year());
}

}  // namespace

QString withPageCodes(const QString& text, const QString& page, const QString& pages) {
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) != u'%' || i + 1 == text.size()) {
            result += text.at(i);
            continue;
        }
        const QChar code = text.at(++i);
        if (code == u'p') {
            result += page;
        } else if (code == u'P') {
            result += pages;
        } else if (code == u'd') {
            result += basic::CStr(basic::Date::today());
        } else if (code == u'D') {
            result += dateInWords(basic::Date::today());
        } else if (code == u'%') {
            result += code;
        } else {
            result += u'%';
            result += code;
        }
    }
    return result;
}

Layout::Layout(const Report& report, const Data& data, const TextMeasure& measure)
    : report_(report), data_(data), measure_(measure), rowsGrow_(grows(report.detail)) {
    freshY_ = report_.margin + heightOf(Part::PageHeader, -1);
    pages_.emplace_back();
    y_ = report_.margin;
    put(Part::ReportHeader, -1);
    // A header that fills its page leaves the rest to the next one.
    if (y_ > report_.margin && !fits(heightOf(Part::PageHeader, -1) + report_.detail.height)) {
        newPage();
    } else {
        put(Part::PageHeader, -1);
    }
    const int groups = data_.groupCount();
    for (int group = 0; group < groups; ++group)
        putGroup(group, group == groups - 1);
    if (!isFresh() && !fits(heightOf(Part::ReportFooter, -1))) newPage();
    put(Part::ReportFooter, -1);
}

const Section& Layout::sectionOf(Part part) const {
    switch (part) {
        case Part::ReportHeader:
            return report_.reportHeader;
        case Part::PageHeader:
            return report_.pageHeader;
        case Part::GroupHeader:
            return report_.groupHeader;
        case Part::GroupContinued:
            return report_.groupContinued;
        case Part::GroupTitles:
            return report_.groupTitles;
        case Part::Rows:
            return report_.detail;
        case Part::GroupFooter:
            return report_.groupFooter;
        case Part::ReportFooter:
            break;
    }
    return report_.reportFooter;
}

bool Layout::isOfGroup(Part part) {
    return part == Part::GroupHeader || part == Part::GroupContinued || part == Part::GroupTitles ||
           part == Part::GroupFooter;
}

/// The height between the margins, above the page's footer.
double Layout::body() const {
    return report_.paperHeight() - 2 * report_.margin - report_.pageFooter.height;
}

double Layout::bottom() const {
    return report_.margin + body();
}

// --- Breaks

bool Layout::fits(double height) const {
    return y_ + height <= bottom() + kHair;
}

void Layout::newPage() {
    pages_.emplace_back();
    y_ = report_.margin;
    put(Part::PageHeader, -1);
}

void Layout::put(Part part, int group) {
    const double height = heightOf(part, group);
    if (height <= 0) return;
    pages_.back().push_back({part, group, 0, 1, y_});
    y_ += height;
}

void Layout::putGroup(int group, bool isLast) {
    const auto rows = static_cast<int>(data_.groupRows(group).size());
    double tail = isLast ? heightOf(Part::ReportFooter, -1) : 0;
    if (!isGrouped()) return putRows(group, tail);

    tail += heightOf(Part::GroupFooter, group);
    const int together = std::min(kRowsTogether, rows);
    const double head = heightOf(Part::GroupHeader, group) + heightOf(Part::GroupTitles, group) +
                        heightOfRows(group, 0, together) + (together == rows ? tail : 0);
    if (!isFresh() && !fits(head)) newPage();
    put(Part::GroupHeader, group);
    put(Part::GroupTitles, group);
    putRows(group, tail);
    if (!isFresh() && !fits(heightOf(Part::GroupFooter, group))) newPage();
    put(Part::GroupFooter, group);
}

/// The last row stays with what follows it (`tail`), so that no sum stands alone on a page.
void Layout::putRows(int group, double tail) {
    const auto rows = static_cast<int>(data_.groupRows(group).size());
    bool mayBreak = !isFresh();
    for (int next = 0; next < rows;) {
        int count = rowsThatFit(group, next);
        if (next + count == rows && !fits(heightOfRows(group, next, count) + tail)) --count;
        if (count <= 0 && mayBreak) {
            newPage();
            put(Part::GroupContinued, isGrouped() ? group : -1);
            put(Part::GroupTitles, isGrouped() ? group : -1);
            mayBreak = false;
            continue;
        }
        // What no page can hold together stands on a fresh one all the same.
        count = std::max(count, 1);
        pages_.back().push_back({Part::Rows, group, next, count, y_});
        y_ += heightOfRows(group, next, count);
        next += count;
        mayBreak = true;
    }
}

int Layout::rowsThatFit(int group, int first) const {
    const int left = static_cast<int>(data_.groupRows(group).size()) - first;
    if (!rowsGrow_) {
        const double height = report_.detail.height;
        if (height <= 0) return left;
        return std::min(left, static_cast<int>(std::floor((bottom() - y_ + kHair) / height)));
    }
    int count = 0;
    double height = 0;
    while (count < left) {
        height += heightOfRows(group, first + count, 1);
        if (!fits(height)) break;
        ++count;
    }
    return count;
}

double Layout::heightOf(Part part, int group) const {
    if (group < 0 && isOfGroup(part)) return 0;
    return heightOf(sectionOf(part),
                    contextOf({part, group}, group < 0 ? -1 : data_.groupRows(group).front()));
}

double Layout::heightOfRows(int group, int first, int count) const {
    if (!rowsGrow_) return count * report_.detail.height;
    double height = 0;
    for (int i = first; i < first + count; ++i) {
        Context context;
        context.row = data_.groupRows(group)[static_cast<std::size_t>(i)];
        height += heightOf(report_.detail, context);
    }
    return height;
}

// --- Sections

Layout::Context Layout::contextOf(const Run& run, int row) const {
    Context context;
    context.row = row;
    context.group = isOfGroup(run.part) ? run.group : -1;
    return context;
}

double Layout::heightOf(const Section& section, const Context& context) const {
    if (section.height <= 0 || !grows(section)) return section.height;
    const std::vector<Move> all = moves(section, context);
    double designed = 0;
    double lowest = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const double bottom = section.elements[i].place.bottom();
        designed = std::max(designed, bottom);
        lowest = std::max(lowest, bottom + all[i].down + all[i].growth);
    }
    // What was left free at the section's foot stays free.
    return std::max(section.height, lowest + std::max(0.0, section.height - designed));
}

/// How far each element moves down, where what stands above it has grown into its place, and how far it
/// grows.
std::vector<Layout::Move> Layout::moves(const Section& section, const Context& context) const {
    const std::vector<Element>& elements = section.elements;
    std::vector<Move> all(elements.size());
    if (!grows(section)) return all;
    std::vector<std::size_t> order(elements.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return elements[a].place.top < elements[b].place.top;
    });
    for (const std::size_t i : order) {
        const Box& place = elements[i].place;
        for (const std::size_t k : order) {
            const double gap = place.top - elements[k].place.bottom();
            if (gap < -kHair) continue;
            const double over = all[k].down + all[k].growth - gap + std::min(gap, kGap);
            // What stood in one line with something that moved stays in line with it.
            all[i].down = std::max({all[i].down, over, all[k].down});
        }
        if (elements[i].fit != Fit::Grow || !isText(elements[i])) continue;
        const double room = place.height + std::max(0.0, body() - section.height);
        const auto lines =
            static_cast<double>(linesOf(elements[i], textOf(elements[i], context), room).size());
        all[i].growth = std::max(0.0, lines * measure_.lineHeight(fontOf(elements[i])) - place.height);
    }
    // A frame holds what grows inside it.
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Box& frame = elements[i].place;
        if (elements[i].kind != Element::Kind::Frame) continue;
        for (std::size_t k = 0; k < elements.size(); ++k) {
            const Box& held = elements[k].place;
            if (held.top < frame.top - kHair || held.bottom() > frame.bottom() + kHair) continue;
            all[i].growth = std::max(all[i].growth, all[k].down + all[k].growth - all[i].down);
        }
    }
    return all;
}

QString Layout::textOf(const Element& element, const Context& context) const {
    switch (element.kind) {
        case Element::Kind::Label:
            return element.source;
        case Element::Kind::Field:
            return data_.text(element.source, element.format, context.row);
        case Element::Kind::Sum:
            return data_.sum(element.source, context.group);
        case Element::Kind::PageText:
            return withPageCodes(element.source, context.page, context.pages);
        default:
            return {};
    }
}

Font Layout::fontOf(const Element& element) const {
    return {element.size > 0 ? element.size : report_.fontSize, element.isBold, element.isItalic};
}

/// In the element's width and that height.
QStringList Layout::linesOf(const Element& element, const QString& text, double height) const {
    if (text.isEmpty()) return {};
    const Font font = fontOf(element);
    const double width = std::max(0.0, element.place.width - 2 * kPadding);
    if (element.fit == Fit::Cut) return {cutLine(text, width, measure_, font)};
    const int most = std::max(1, static_cast<int>(std::floor((height + kHair) / measure_.lineHeight(font))));
    return wrapLines(text, width, most, measure_, font);
}

void Layout::place(const Section& section, const Context& context, double top,
                   std::vector<Item>& items) const {
    const std::vector<Move> all = moves(section, context);
    const auto placed = [&](std::size_t i) {
        const Element& element = section.elements[i];
        Item item;
        item.kind = element.kind;
        item.place = element.place;
        item.place.left += report_.margin;
        item.place.top += top + all[i].down;
        item.place.height += all[i].growth;
        item.font = fontOf(element);
        item.align = element.align;
        item.fill = element.fill;
        item.stroke = element.stroke;
        if (element.kind == Element::Kind::Image) item.lines = QStringList{element.source};
        if (!isText(element)) return item;
        item.lines = linesOf(element, textOf(element, context), item.place.height);
        item.place.left += kPadding;
        item.place.width = std::max(0.0, item.place.width - 2 * kPadding);
        return item;
    };
    for (const bool frames : {true, false}) {
        for (std::size_t i = 0; i < section.elements.size(); ++i) {
            if ((section.elements[i].kind == Element::Kind::Frame) != frames) continue;
            Item item = placed(i);
            if (isText(section.elements[i]) && item.lines.isEmpty()) continue;
            items.push_back(std::move(item));
        }
    }
}

/// Calls visit(section, context, top, place among its group's rows or -1) down the page.
template <typename Visit>
void Layout::forEachSection(int index, const QString& pages, Visit&& visit) const {
    const QString page = QString::number(index + 1);
    for (const Run& run : pages_.at(static_cast<std::size_t>(index))) {
        double top = run.top;
        for (int i = run.first; i < run.first + run.count; ++i) {
            const int row = run.group < 0 ? -1 : data_.groupRows(run.group)[static_cast<std::size_t>(i)];
            Context context = contextOf(run, row);
            context.page = page;
            context.pages = pages;
            visit(sectionOf(run.part), context, top, run.part == Part::Rows ? i : -1);
            if (run.part == Part::Rows) top += heightOf(report_.detail, context);
        }
    }
    Context context;
    context.page = page;
    context.pages = pages;
    if (report_.pageFooter.height > 0) visit(report_.pageFooter, context, bottom(), -1);
}

Page Layout::page(int index, const QString& pages) const {
    Page made;
    forEachSection(index, pages,
                   [&](const Section& section, const Context& context, double top, int rowInGroup) {
                       if (report_.banded && rowInGroup % 2 == 1) {
                           Item band;
                           band.kind = Element::Kind::Frame;
                           band.place = {report_.margin, top, report_.width(), heightOf(section, context)};
                           band.fill = kBandFill;
                           made.items.push_back(band);
                       }
                       place(section, context, top, made.items);
                   });
    return made;
}

QStringList Layout::lines(int index, const QString& pages) const {
    QStringList all;
    forEachSection(index, pages, [&](const Section& section, const Context& context, double, int) {
        std::vector<const Element*> order;
        for (const Element& element : section.elements) {
            if (isText(element)) order.push_back(&element);
        }
        std::stable_sort(order.begin(), order.end(), [](const Element* a, const Element* b) {
            return std::pair(a->place.top, a->place.left) < std::pair(b->place.top, b->place.left);
        });
        double lineTop = -1;
        for (const Element* element : order) {
            QString text = textOf(*element, context);
            if (text.isEmpty()) continue;
            text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
            const bool goesOn = lineTop >= 0 && element->place.top - lineTop < kHair;
            if (!goesOn) {
                all << text;
                lineTop = element->place.top;
            } else {
                all.last() += u' ' + text;
            }
        }
    });
    return all;
}

}  // namespace tarmel::report
