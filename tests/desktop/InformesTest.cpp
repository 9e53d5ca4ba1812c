#include <QCloseEvent>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QPrinter>
#include <QProgressBar>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>

#include "desktop/Banco.h"
#include "desktop/PageView.h"
#include "desktop/Pdf.h"
#include "desktop/ReportJobs.h"
#include "desktop/VistaInforme.h"
#include "platform/forms/Host.h"
#include "platform/report/ListRows.h"

using namespace Qt::StringLiterals;

namespace tarmel::desktop {

namespace {

using forms::Modality;

/// A list with a growing filter, texts that are too long for their columns, and sums.
std::shared_ptr<report::Document> list(int rows) {
    using namespace report;
    Report made;
    made.name = u"lista"_s;
    made.title = u"Lista/1"_s;
    made.banded = true;
    made.reportHeader = {
        u"cabeza"_s,
        20,
        {image(u"logo1"_s, {0, 0, 18, 18}),
         label(u"Capturas de aves acuáticas\rentre marzo y mayo"_s, {20, 0, 60, 4}, u"lblFiltro"_s).growing(),
         label(u"LISTA"_s, {20, 6, 60, 8}).bold().points(14)}};
    made.pageHeader = {u"titulos"_s,
                       6,
                       {label(u"Anilla"_s, {0, 0, 20, 5}).bold(), label(u"Especie"_s, {20, 0, 40, 5}).bold(),
                        label(u"Peso"_s, {60, 0, 12, 5}).bold().right(),
                        label(u"Lugar"_s, {72, 0, 30, 5}).bold(), line({0, 5.5, 186, 0})}};
    made.detail = {u"detalle"_s,
                   4.4,
                   {field(u"Anilla"_s, {0, 0, 20, 4.4}), field(u"Especie"_s, {20, 0, 40, 4.4}),
                    field(u"Peso"_s, {60, 0, 12, 4.4}).right(), field(u"Lugar"_s, {72, 0, 30, 4.4})}};
    made.reportFooter = {
        u"pie"_s, 7, {label(u"TOTAL"_s, {0, 1, 20, 5}).bold(), sum(u"Peso"_s, {50, 1, 22, 5})}};
    made.pageFooter = {
        u"pagina"_s, 6, {frame({0, 0, 186, 6}).filled(0.1), pageText(u"Página %p de %P"_s, {0, 1, 60, 5})}};
    made.exportFormats.push_back({u"HojaCampo"_s, ExportFormat::Kind::Html, u"HojaCampo(*.htm)"_s, u"*.HTM"_s,
                                  u"<BODY><!--MSDBRPT_Template_Body--></BODY>"_s});
    std::vector<std::vector<basic::Variant>> values;
    for (int i = 0; i < rows; ++i)
        values.push_back({u"N%1"_s.arg(200'000 + i),
                          i % 7 == 0 ? u"Mosquitero musical o ibérico"_s : u"Buitrón"_s, 10.5 + i,
                          u"Encharcamiento de la Laguna Grande"_s});
    return std::make_shared<Document>(
        std::move(made),
        std::make_unique<ListRows>(QStringList{u"Anilla"_s, u"Especie"_s, u"Peso"_s, u"Lugar"_s},
                                   std::move(values)));
}

}  // namespace

class Informes : public DesktopTest {
 protected:
    VistaInforme& show(const std::shared_ptr<report::Document>& document) {
        escritorio.ShowReport(document, Modality::Modeless);
        VistaInforme& window = *escritorio.previews().back();
        QApplication::processEvents();
        return window;
    }
    template <typename WidgetType>
    static WidgetType& child(QWidget& window) {
        return *window.findChild<WidgetType*>();
    }
    static QString state(QWidget& window) {
        QStringList texts;
        for (const QLabel* label : window.findChildren<QLabel*>())
            texts << label->text();
        return texts.join(u'|');
    }
    /// Until nothing is printed or saved any more.
    static void finish(const VistaInforme& window) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !window.isWorking(); }, 60'000));
    }
    [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
    static QByteArray bytes(const QString& file) {
        QFile opened(file);
        return opened.open(QFile::ReadOnly) ? opened.readAll() : QByteArray();
    }
};

TEST_F(Informes, PageTurnsZoomAndStateByTheKeyboard) {
    VistaInforme& window = show(list(200));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.document()->isRead(); }));
    const int pages = window.document()->pageCount();
    ASSERT_GE(pages, 4);
    PageView& view = window.pages();
    EXPECT_TRUE(state(window).contains(u"Página 1 de %1 · 200 filas"_s.arg(pages)))
        << state(window).toStdString();
    const std::pair<Qt::Key, int> turns[] = {
        {Qt::Key_PageDown, 1},         {Qt::Key_PageDown, 2}, {Qt::Key_PageUp, 1}, {Qt::Key_End, pages - 1},
        {Qt::Key_PageDown, pages - 1}, {Qt::Key_Home, 0},     {Qt::Key_PageUp, 0}};
    for (const auto& [key, page] : turns) {
        QTest::keyClick(&view, key);
        EXPECT_EQ(view.page(), page);
        EXPECT_EQ(child<QSpinBox>(window).value(), page + 1);
    }
    // Down the page, then on to the next one, and back to the foot of the one before.
    view.setPercent(200);
    QScrollBar& bar = *view.verticalScrollBar();
    for (int i = 0; view.page() == 0 && i < 100; ++i)
        QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(view.page(), 1);
    EXPECT_EQ(bar.value(), 0);
    QTest::keyClick(&view, Qt::Key_Up);
    EXPECT_EQ(view.page(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    QTest::keyClick(&window, Qt::Key_G, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), u"3\r"_s);
    EXPECT_EQ(view.page(), 2);
    EXPECT_TRUE(view.hasFocus());
    QTest::keyClick(&window, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(view.percent(), 300);
    QTest::keyClick(&window, Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(view.percent(), 200);
    EXPECT_EQ(child<QComboBox>(window).currentText(), u"200 %"_s);
    QTest::keyClick(&window, Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(view.zoom(), PageView::Zoom::Whole);
    EXPECT_EQ(bar.maximum(), 0);
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(escritorio.previews().empty());
}

TEST_F(Informes, OpensBesideTheScreenAndPaintsBeforeAllRowsAreThere) {
    escritorio.ShowReport(list(100'000), Modality::Modeless);
    VistaInforme& window = *escritorio.previews().back();
    const QImage picture = window.grab().toImage();
    EXPECT_FALSE(window.document()->isRead());
    EXPECT_TRUE(state(window).contains(u"…"_s));
    // The paper is white, and something is printed on it.
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); y += 2) {
        for (int x = 0; x < picture.width(); ++x)
            colours.insert(picture.pixel(x, y));
    }
    EXPECT_TRUE(colours.contains(qRgb(255, 255, 255)));
    EXPECT_GT(colours.size(), 20);
    const QScreen& screen = *window.screen();
    EXPECT_EQ(window.pos(), screen.availableGeometry().topLeft() +
                                QPoint(1, 1) * static_cast<int>(screen.logicalDotsPerInch() * 1000 / 1440));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.document()->isRead(); }, 60'000));
    EXPECT_TRUE(state(window).contains(u"100.000 filas"_s)) << state(window).toStdString();
}

TEST_F(Informes, AModalOneHoldsItsCallerAndAnswersWithAnArrow) {
    escritorio.SetPointer(forms::Pointer::Hourglass);
    bool seen = false;
    answers.inReport = [&](const report::Document& document) {
        seen = true;
        ASSERT_NE(escritorio.previewOf(document), nullptr);
        EXPECT_TRUE(escritorio.previewOf(document)->isModal());
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        escritorio.previewOf(document)->close();
    };
    escritorio.ShowReport(list(3), Modality::Modal);
    EXPECT_TRUE(seen);
    EXPECT_TRUE(escritorio.previews().empty());
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    escritorio.SetPointer(forms::Pointer::Default);
}

TEST_F(Informes, ThePdfHoldsEveryWordInItsColumn) {
    const auto document = list(120);
    VistaInforme& window = show(document);
    answers.file = path(u"lista.pdf"_s);
    window.savePdf();
    EXPECT_TRUE(window.isWorking());
    EXPECT_EQ(document->AsynchronousOperations(), 1);
    EXPECT_FALSE(QFile::exists(*answers.file));  // nothing half written under its name
    finish(window);
    EXPECT_EQ(document->AsynchronousOperations(), 0);
    EXPECT_TRUE(answers.asked.isEmpty()) << answers.asked.join(u'|').toStdString();
    Pdf pdf(*answers.file);
    ASSERT_EQ(static_cast<int>(pdf.pages().size()), document->pageCount());
    pdf.expectTidy();
    for (int row = 0; row < document->rowCount(); ++row) {
        for (const report::Element& element : document->report().detail.elements)
            pdf.expectText(document->valueText(element, row));
    }
    EXPECT_TRUE(pdf.words().contains(u"musical…"_s) || pdf.words().contains(u"ibéri…"_s) ||
                pdf.words().contains(u"Encharcamiento"_s));
    for (std::size_t page = 1; page <= pdf.pages().size(); ++page) {
        EXPECT_GT(pdf.darkness(static_cast<int>(page)), 0.01);
        EXPECT_LT(pdf.darkness(static_cast<int>(page)), 0.4);
    }
}

TEST_F(Informes, ClosingWaitsForThePrinter) {
    const auto document = list(2000);
    document->QueryClose = [](report::Document& d) {
        while (d.AsynchronousOperations() >= 1)
            forms::host().DoEvents();
    };
    VistaInforme& window = show(document);
    const QString file = path(u"impreso.pdf"_s);
    auto printer = std::make_unique<QPrinter>();
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(file);
    printer->setPageSize(QPageSize(QPageSize::A5));  // smaller paper: the pages are made to fit
    window.printOn(std::move(printer));
    EXPECT_EQ(document->AsynchronousOperations(), 1);
    window.close();
    EXPECT_EQ(document->AsynchronousOperations(), 0);
    EXPECT_TRUE(escritorio.previews().empty());
    const Pdf pdf(file);
    EXPECT_EQ(static_cast<int>(pdf.pages().size()), document->pageCount());
    pdf.expectTidy();
}

TEST_F(Informes, OnlyTheAskedPagesArePrinted) {
    const QString file = path(u"impreso.pdf"_s);
    auto printer = std::make_unique<QPrinter>();
    printer->setOutputFileName(file);
    QPageRanges ranges;
    ranges.addRange(2, 3);
    const auto job = printJob(list(300), std::move(printer), ranges);
    bool done = false;
    QObject::connect(job.get(), &ReportJob::finished, [&] { done = true; });
    job->start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return done; }));
    const Pdf pdf(file);
    ASSERT_EQ(pdf.pages().size(), 2U);
    EXPECT_TRUE(pdf.words().contains(u"3"_s));
    EXPECT_FALSE(pdf.words().contains(u"N200000"_s));
}

TEST_F(Informes, GivingUpOrARefusedFileLeavesWhatWasThere) {
    VistaInforme& window = show(list(20'000));
    for (const QString& name : {u"lista.pdf"_s, u"lista.htm"_s}) {
        SCOPED_TRACE(name.toStdString());
        const bool isPdf = name.endsWith(u"pdf"_s);
        answers.file = path(name);
        QFile before(*answers.file);
        ASSERT_TRUE(before.open(QFile::WriteOnly) && before.write("lo de antes") > 0);
        before.close();
        isPdf ? window.savePdf() : window.exportHtml();
        ASSERT_TRUE(QTest::qWaitFor([&] { return child<QProgressBar>(window).value() > 3; }, 60'000));
        window.cancelJob();
        EXPECT_FALSE(window.isWorking());
        EXPECT_EQ(bytes(*answers.file), "lo de antes");
        EXPECT_TRUE(state(window).contains(u"Cancelado"_s));

        answers.file = path(u"no hay/"_s + name);
        isPdf ? window.savePdf() : window.exportHtml();
        finish(window);
        ASSERT_EQ(answers.asked.size(), 1);
        EXPECT_TRUE(answers.asked.takeFirst().startsWith(u"No se ha podido guardar el fichero «"_s));
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), (QStringList{u"lista.htm"_s, u"lista.pdf"_s}));
}

TEST_F(Informes, TheHtmlIsWrittenWhole) {
    VistaInforme& window = show(list(700));
    answers.file = path(u"lista.htm"_s);
    window.exportHtml();
    finish(window);
    const QByteArray html = bytes(*answers.file);
    EXPECT_EQ(html.count("<TR>"), 702);
    EXPECT_TRUE(html.contains("<IMG") && html.endsWith("</BODY>"));
}

}  // namespace tarmel::desktop
