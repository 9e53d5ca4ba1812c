#include <gtest/gtest.h>

#include <QBuffer>
#include <QXmlStreamReader>

#include "platform/basic/RuntimeError.h"
#include "platform/report/HtmlExport.h"
#include "platform/report/ListRows.h"

using namespace Qt::StringLiterals;

namespace tarmel::report {

namespace {

Report balance() {
    Report report;
    report.title = u"Balance <año>"_s;
    report.reportHeader = {
        u"cabeza"_s,
        20,
        {image(u"logo"_s, {0, 0, 10, 10}), label(u"Filtro: a < b\rtodo"_s, {10, 0, 50, 10})}};
    report.detail = {
        u"detalle"_s, 5, {field(u"Especie"_s, {0, 0, 50, 5}), field(u"Pollos"_s, {50, 0, 20, 5}).right()}};
    report.exportFormats.push_back(
        {u"HojaCampo"_s, ExportFormat::Kind::Html, u"HojaCampo(*.htm)"_s, u"*.HTM"_s,
         u"<HTML>\r\n<TITLE>Hoja: <!--MSDBRPT_Template_Title--></TITLE>\r\n<BODY>\r\n"
         "<!--MSDBRPT_Template_Body-->\r\n</BODY>\r\n</HTML>"_s});
    return report;
}

std::unique_ptr<Rows> birds(int count) {
    std::vector<std::vector<basic::Variant>> rows;
    for (int i = 0; i < count; ++i)
        rows.push_back({i % 2, i == 0 ? u"Cigüeña & \"Cía\" 🐦"_s : u"Mirlo"_s, i});
    return std::make_unique<ListRows>(QStringList{u"Grupo"_s, u"Especie"_s, u"Pollos"_s}, std::move(rows));
}

QByteArray exported(Document& document) {
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    HtmlExport html(document, document.report().exportFormats.front(), file,
                    [](const QString&) { return QByteArray("<svg/>"); });
    double before = 0;
    while (html.step()) {
        EXPECT_GE(html.progress(), before);
        before = html.progress();
    }
    EXPECT_EQ(html.progress(), 1);
    return file.data();
}

/// The cells of all tables, row by row; heads of tables marked "#". What no parser can read fails.
QStringList tableRows(QByteArray html) {
    html.replace("&nbsp;", "").replace("<BR>", "<BR/>");
    QStringList rows;
    QXmlStreamReader reader(html);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == u"IMG") continue;
        if (reader.isStartElement() && reader.name() == u"TR") rows << QString();
        if (reader.isStartElement() && (reader.name() == u"TD" || reader.name() == u"TH")) {
            const QString mark = reader.name() == u"TH" ? u"#"_s : QString();
            const QString right = reader.attributes().hasAttribute(u"ALIGN"_s) ? u">"_s : QString();
            rows.last() += u'|' + mark + right + reader.readElementText();
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString() << html.toStdString();
    return rows;
}

}  // namespace

TEST(ReportHtml, PutsTitleAndTablesIntoTheTemplateInPlainAscii) {
    Report report = balance();
    report.pageHeader = {u"titulos"_s,
                         12,
                         {label(u"BALANCE"_s, {0, 0, 90, 5}).bold(), label(u"Especie"_s, {0, 6, 50, 5}),
                          label(u"Nº"_s, {50, 6, 20, 5}).right()}};
    report.reportFooter = {u"pie"_s, 6, {label(u"Total"_s, {0, 0, 40, 5}), sum(u"Pollos"_s, {50, 0, 20, 5})}};
    Document document(report, birds(450));
    const QByteArray html = exported(document);
    EXPECT_TRUE(std::all_of(html.begin(), html.end(), [](char c) { return c > 0; }));
    EXPECT_TRUE(html.startsWith("<HTML>\r\n<TITLE>Hoja: Balance &lt;a&#241;o&gt;</TITLE>"))
        << html.left(90).toStdString();
    EXPECT_TRUE(html.endsWith("</BODY>\r\n</HTML>"));
    EXPECT_TRUE(html.contains("<P>Filtro: a &lt; b<BR>todo</P>"));
    EXPECT_TRUE(html.contains("<P><B>BALANCE</B></P>"));
    EXPECT_TRUE(html.contains("base64," + QByteArray("<svg/>").toBase64()));
    const QStringList rows =
        tableRows(QByteArray(html).replace("SRC=\"data:image/svg+xml;base64,PHN2Zy8+\">", "/>"));
    ASSERT_EQ(rows.size(), 452);
    EXPECT_EQ(rows.at(0), u"|#Especie|#>Nº"_s);
    EXPECT_EQ(rows.at(1), u"|Cigüeña & \"Cía\" 🐦|>0"_s);
    EXPECT_EQ(rows.at(450), u"|Mirlo|>449"_s);
    EXPECT_EQ(rows.at(451), u"|Total|>101025"_s);
}

TEST(ReportHtml, MakesATableOfEachGroup) {
    Report report = balance();
    report.groupBy = QStringList{u"Grupo"_s};
    report.reportHeader.elements.clear();
    report.groupHeader = {
        u"grupo"_s, 6, {label(u"Grupo"_s, {0, 0, 20, 5}).bold(), field(u"Grupo"_s, {20, 0, 20, 5})}};
    report.groupTitles = {u"titulos"_s, 6, {label(u"Especie"_s, {0, 0, 50, 5})}};
    report.groupFooter = {u"pie"_s, 6, {sum(u"Pollos"_s, {50, 0, 20, 5})}};
    Document document(report, birds(5));
    const QByteArray html = exported(document);
    EXPECT_EQ(html.count("<TABLE"), 2);
    EXPECT_EQ(html.count("</TABLE>"), 2);
    EXPECT_TRUE(html.contains("<P><B>Grupo</B> 1</P>"));
    EXPECT_EQ(tableRows(html),
              (QStringList{u"|#Especie|#>"_s, u"|Cigüeña & \"Cía\" 🐦|>0"_s, u"|Mirlo|>2"_s, u"|Mirlo|>4"_s,
                           u"||>6"_s, u"|#Especie|#>"_s, u"|Mirlo|>1"_s, u"|Mirlo|>3"_s, u"||>4"_s}));
    Document empty(report);
    EXPECT_FALSE(exported(empty).contains("<TABLE"));
}

TEST(ReportHtml, TellsOfADiskThatIsFull) {
    class Full final : public QIODevice {
     public:
        Full() { open(WriteOnly); }
        qint64 readData(char*, qint64) override { return -1; }
        qint64 writeData(const char*, qint64) override { return -1; }
    } full;
    Document document(balance(), birds(3));
    HtmlExport html(document, document.report().exportFormats.front(), full, nullptr);
    try {
        html.step();
        FAIL() << "nothing was said";
    } catch (const basic::RuntimeError& error) {
        EXPECT_EQ(error.number(), basic::error::DiskFull);
    }
}

}  // namespace tarmel::report
