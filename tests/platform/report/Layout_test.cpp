#include <gtest/gtest.h>

#include <map>

#include "platform/report/Document.h"
#include "platform/report/ListRows.h"

using namespace Qt::StringLiterals;

namespace tarmel::report {

namespace {

using basic::Null;
using basic::Variant;

constexpr double kRow = 5;

/// A list of sheets: header, titles that repeat, a sum for each and one over all.
Report sheets() {
    Report report;
    report.name = u"prueba"_s;
    report.groupBy = QStringList{u"Hoja"_s};
    report.reportHeader = {u"cabeza"_s, 10, {label(u"TITULO"_s, {0, 0, 100, 5}, u"lblTitulo"_s)}};
    report.pageHeader = {u"pagina"_s, 6, {label(u"MEMBRETE"_s, {0, 0, 100, 5})}};
    report.groupHeader = {u"hoja"_s, 8, {label(u"HOJA"_s, {0, 0, 20, 5}), field(u"Hoja"_s, {20, 0, 40, 5})}};
    report.groupContinued = {u"sigue"_s, 5, {label(u"SIGUE"_s, {0, 0, 20, 5})}};
    report.groupTitles = {u"titulos"_s, 6, {label(u"PESO"_s, {0, 0, 20, 5})}};
    report.detail = {
        u"detalle"_s, kRow, {field(u"Reg"_s, {0, 0, 20, kRow}), field(u"Peso"_s, {20, 0, 20, kRow}).right()}};
    report.groupFooter = {u"pie"_s, 7, {label(u"SUMA"_s, {0, 0, 20, 5}), sum(u"Peso"_s, {20, 0, 20, 5})}};
    report.reportFooter = {u"total"_s, 9, {label(u"TOTAL"_s, {0, 0, 20, 5}), sum(u"Peso"_s, {20, 0, 20, 5})}};
    report.pageFooter = {u"numeros"_s, 6, {pageText(u"Página %p de %P 100%%"_s, {0, 0, 60, 5})}};
    return report;
}

std::unique_ptr<ListRows> rowsOf(const std::vector<int>& sizes) {
    std::vector<std::vector<Variant>> rows;
    int number = 0;
    for (std::size_t sheet = 0; sheet < sizes.size(); ++sheet) {
        for (int i = 0; i < sizes[sheet]; ++i)
            rows.push_back({static_cast<int>(640000 + sheet), u"r%1"_s.arg(++number), 1.5});
    }
    return std::make_unique<ListRows>(QStringList{u"Hoja"_s, u"Reg"_s, u"Peso"_s}, std::move(rows));
}

struct Line {
    double top;
    QString text;
};

/// What is printed on a page, from the top; texts at one height in one line.
std::vector<Line> printed(const Page& page) {
    std::map<double, QString> byTop;
    for (const Item& item : page.items) {
        if (item.lines.isEmpty() || item.kind == Element::Kind::Image) continue;
        QString& line = byTop[item.place.top];
        line += (line.isEmpty() ? u""_s : u" "_s) + item.lines.join(u'/');
    }
    std::vector<Line> lines;
    for (const auto& [top, text] : byTop)
        lines.push_back({top, text});
    return lines;
}

QStringList texts(const Page& page) {
    QStringList all;
    for (const Line& line : printed(page))
        all << line.text;
    return all;
}

/// Fixed letters: what is measured here must not depend on a table of widths.
class Square final : public TextMeasure {
 public:
    double width(const QString& text, const Font&) const override { return static_cast<double>(text.size()); }
    double lineHeight(const Font&) const override { return 4; }
};

Report oneLabel(Element element) {
    Report report;
    report.reportHeader = {u"cabeza"_s, 12, {element, label(u"debajo"_s, {0, 8, 50, 4})}};
    return report;
}

}  // namespace

class Breaks : public testing::TestWithParam<std::vector<int>> {};

TEST_P(Breaks, KeepEveryRowOnceInItsPlaceAndLeaveNoHeaderAlone) {
    const std::vector<int>& sizes = GetParam();
    Document document(sheets(), rowsOf(sizes));
    const int pages = document.pageCount();
    const int rows = document.rowCount();
    int next = 1;
    QString sheet;
    for (int i = 0; i < pages; ++i) {
        const std::vector<Line> lines = printed(document.page(i));
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.back().text, u"Página %1 de %2 100%"_s.arg(i + 1).arg(pages));
        const auto at = [&](std::size_t k) { return k < lines.size() ? lines[k].text : QString(); };
        std::size_t k = 0;
        if (i == 0) {
            EXPECT_EQ(at(k++), u"TITULO"_s);
        }
        EXPECT_EQ(at(k++), u"MEMBRETE"_s);
        // A group that goes on begins with its titles; a page of a sum alone has a row above it.
        if (at(k).startsWith(u'r') || at(k) == u"PESO"_s) ADD_FAILURE() << "a nameless row on page " << i;
        for (; k + 1 < lines.size(); ++k) {
            const QString& line = lines[k].text;
            EXPECT_GE(lines[k + 1].top - lines[k].top, kRow) << line.toStdString();
            if (line.startsWith(u"HOJA")) {
                EXPECT_EQ(at(k + 1), u"PESO"_s);
                sheet = line;
            } else if (line == u"SIGUE") {
                EXPECT_EQ(at(k + 1), u"PESO"_s);
                EXPECT_EQ(at(k - 1), u"MEMBRETE"_s);
            } else if (line == u"PESO") {
                EXPECT_TRUE(at(k + 1).startsWith(u'r')) << "titles alone at the foot of page " << i;
            } else if (line.startsWith(u'r')) {
                EXPECT_EQ(line, u"r%1 1,5"_s.arg(next));
                ++next;
            } else if (line.startsWith(u"SUMA") || line.startsWith(u"TOTAL")) {
                EXPECT_TRUE(at(k - 1).startsWith(u'r') || at(k - 1).startsWith(u"SUMA") || rows == 0)
                    << "a sum alone on page " << i;
            }
        }
        EXPECT_LE(lines[k - 1].top + kRow, lines.back().top);
        EXPECT_LE(lines.back().top + 6, 297 - 12);
    }
    EXPECT_EQ(next, rows + 1);
    EXPECT_EQ(document.groupCount(), static_cast<int>(sizes.size()));
}

std::vector<std::vector<int>> sizesToBreak() {
    std::vector<std::vector<int>> all{
        {}, {1}, {500}, {1, 1, 1}, std::vector<int>(60, 1), std::vector<int>(40, 2)};
    // Each place at which a group may meet the foot of the page.
    for (int first = 38; first <= 54; ++first) {
        all.push_back({first});
        all.push_back({first, 3, 50});
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(Report, Breaks, testing::ValuesIn(sizesToBreak()));

TEST(ReportGroups, GatherRowsWhereverTheyStandAndAddThemUp) {
    const auto row = [](Variant sheet, Variant place, Variant count, Variant weight) {
        return std::vector<Variant>{std::move(sheet), std::move(place), std::move(count), std::move(weight)};
    };
    Report report = sheets();
    report.groupBy = QStringList{u"Hoja"_s, u"Lugar"_s, u"no está"_s};
    Document document(
        report, std::make_unique<ListRows>(
                    QStringList{u"Hoja"_s, u"Lugar"_s, u"Reg"_s, u"Peso"_s},
                    std::vector<std::vector<Variant>>{row(2, u"b"_s, 1, 10.5), row(1, u"b"_s, 2, 20),
                                                      row(2, u"b"_s, 3, Null()), row(2, Null(), 4, 7),
                                                      row(2, u""_s, 5, Null()), row(1, u"b"_s, 6, -40)}));
    ASSERT_EQ(document.groupCount(), 4);  // Null and an empty text are two places
    EXPECT_EQ(document.groupRows(0), (std::vector<int>{0, 2}));
    EXPECT_EQ(document.groupRows(1), (std::vector<int>{1, 5}));
    EXPECT_EQ(document.groupSum(u"Peso"_s, 0), u"10,5"_s);
    EXPECT_EQ(document.groupSum(u"Peso"_s, 1), u"-20"_s);
    EXPECT_EQ(document.groupSum(u"Peso"_s, 3), QString());
    EXPECT_EQ(document.totalSum(u"Peso"_s), u"-2,5"_s);
    EXPECT_EQ(document.totalSum(u"no está"_s), QString());
    EXPECT_TRUE(document.text().contains(u"TOTAL -2,5"_s)) << document.text().toStdString();
}

TEST(ReportReading, ShowsTheFirstPageOfManyRowsBeforeTheyAreRead) {
    constexpr int kRows = 100'000;
    auto rows = rowsOf({kRows});
    ListRows& counted = *rows;
    Report report = sheets();
    report.groupBy.clear();
    Document document(report, std::move(rows));
    EXPECT_TRUE(document.HasRows());
    EXPECT_EQ(document.rowsRead(), 1);
    EXPECT_TRUE(texts(document.page(0)).contains(u"Página 1 de … 100%"_s));
    EXPECT_LT(document.rowsRead(), 1000);
    EXPECT_LT(counted.asked, 1000);
    EXPECT_FALSE(document.read(0));
    // The number of pages is reckoned, not laid out.
    counted.asked = 0;
    const int pages = document.pageCount();
    EXPECT_EQ(counted.asked, 0);
    EXPECT_TRUE(texts(document.page(pages - 1)).contains(u"r100000 1,5"_s));
    EXPECT_TRUE(
        texts(document.page(pages - 2)).last().startsWith(u"Página %1 de %2"_s.arg(pages - 1).arg(pages)));
}

TEST(ReportReading, OpensEmptyWithoutRowsAndEndsWhereTheDataFail) {
    class Failing final : public Rows {
     public:
        int columnIndex(const QString&) const override { return 0; }
        int read(int rows) override {
            if (rows > 3) throw basic::RuntimeError(-2147217900, u"mal"_s, u"Motor"_s);
            return rows;
        }
        Variant value(int row, int) const override { return row; }
    };
    Document empty(sheets());
    EXPECT_FALSE(empty.HasRows());
    EXPECT_EQ(empty.pageCount(), 1);
    EXPECT_EQ(texts(empty.page(0)),
              (QStringList{u"TITULO"_s, u"MEMBRETE"_s, u"TOTAL"_s, u"Página 1 de 1 100%"_s}));
    Document failing(sheets(), std::make_unique<Failing>());
    EXPECT_TRUE(failing.HasRows());
    EXPECT_EQ(failing.rowCount(), 1);
}

struct Text {
    const char* name;
    Fit fit;
    QString text;
    QStringList lines;
    double below;  ///< how far what stands below has moved
};

class Texts : public testing::TestWithParam<Text> {};

TEST_P(Texts, StayInTheirPlaceOrMakeRoom) {
    const Text& param = GetParam();
    Element element = label(param.text, {0, 0, 13, 8}, u"lblFiltro"_s);  // 12 letters, 2 lines
    element.fit = param.fit;
    Document document(oneLabel(element));
    document.setMeasure(std::make_shared<Square>());
    const Page page = document.page(0);
    ASSERT_EQ(page.items.size(), param.lines.isEmpty() ? 1U : 2U);
    if (!param.lines.isEmpty()) {
        EXPECT_EQ(page.items.front().lines, param.lines);
    }
    EXPECT_DOUBLE_EQ(page.items.back().place.top, 12 + 8 + param.below);
}

INSTANTIATE_TEST_SUITE_P(
    Report, Texts,
    testing::Values(
        Text{"fits", Fit::Cut, u"doce letras."_s, {u"doce letras."_s}, 0},
        Text{"cut", Fit::Cut, u"trece letras."_s, {u"trece letra…"_s}, 0},
        Text{"cutInOneLine", Fit::Cut, u"\runa\r\ndos"_s, {u"una dos"_s}, 0},
        Text{"wrapped", Fit::Wrap, u"una línea y otra"_s, {u"una línea y"_s, u"otra"_s}, 0},
        Text{"wrappedAndCut", Fit::Wrap, u"una línea y otra más"_s, {u"una línea y"_s, u"otra más"_s}, 0},
        Text{"wrappedAndMarked",
             Fit::Wrap,
             u"una línea y otra más larga"_s,
             {u"una línea y"_s, u"otra más la…"_s},
             0},
        Text{"wrappedParagraphs", Fit::Wrap, u"a\rb\rc"_s, {u"a"_s, u"b…"_s}, 0},
        Text{"longWord", Fit::Wrap, u"quebrantahuesos"_s, {u"quebrantahue"_s, u"sos"_s}, 0},
        Text{"growing",
             Fit::Grow,
             u"\rfiltro:\r\nuna línea\ny otra más larga"_s,
             {u"filtro:"_s, u"una línea"_s, u"y otra más"_s, u"larga"_s},
             8},
        Text{"nothing", Fit::Grow, QString(), {}, 0}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(ReportHeader, TallerThanItsPageIsCutThereAndTheRowsFollow) {
    Report report = sheets();
    report.reportHeader.elements.front().growing();
    Document document(report, rowsOf({10}));
    QStringList filter;
    for (int i = 0; i < 400; ++i)
        filter << u"criterio %1"_s.arg(i);
    document.SetText(u"lblTitulo"_s, filter.join(u'\r'));
    document.SetText(u"no hay"_s, u"nada"_s);
    EXPECT_EQ(document.Text(u"lblTitulo"_s).size(), filter.join(u'\r').size());
    ASSERT_EQ(document.pageCount(), 2);
    const Item header = document.page(0).items.front();
    EXPECT_TRUE(header.lines.last().endsWith(u'…'));
    EXPECT_LE(header.place.bottom(), 297 - 12 - 6 + 0.01);
    EXPECT_TRUE(texts(document.page(1)).contains(u"r10 1,5"_s));
}

TEST(ReportFields, ShowDatesAsToldAndRowsOnALightGround) {
    Report report;
    report.banded = true;
    report.detail = {u"detalle"_s,
                     kRow,
                     {field(u"Hora"_s, {0, 0, 40, kRow}).formatted(u"HH:mm"_s),
                      field(u"Hora"_s, {40, 0, 40, kRow}), field(u"nada"_s, {80, 0, 9, 5})}};
    const Variant time(basic::Date::timeOfDay(7, 5));
    Document document(
        report, std::make_unique<ListRows>(QStringList{u"Hora"_s}, std::vector<std::vector<Variant>>{
                                                                       {time}, {Null()}, {time}, {time}}));
    const Page page = document.page(0);
    EXPECT_EQ(texts(page), (QStringList{u"07:05 7:05:00"_s, u"07:05 7:05:00"_s, u"07:05 7:05:00"_s}));
    std::vector<double> bands;
    for (const Item& item : page.items) {
        if (item.kind == Element::Kind::Frame) bands.push_back(item.place.top);
    }
    EXPECT_EQ(bands, (std::vector<double>{12 + kRow, 12 + 3 * kRow}));
}

}  // namespace tarmel::report
