#include "desktop/VistaInforme.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QDate>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "desktop/Escritorio.h"
#include "desktop/PageView.h"
#include "desktop/ReportJobs.h"
#include "desktop/ReportPainter.h"

namespace tarmel::desktop {

namespace {

constexpr int kReadingTime = 20;  // milliseconds between two looks at the events
constexpr int kPercents[] = {50, 75, 100, 125, 150, 200};

QString spanishNumber(int number) {
    return QLocale(QLocale::Spanish, QLocale::Spain).toString(number);
}

QString counted(int number, const QString& one, const QString& many) {
    return QStringLiteral("%1 %2").arg(spanishNumber(number), number == 1 ? one : many);
}

QString keysTip(const QString& tip, const QList<QKeySequence>& keys) {
    if (keys.isEmpty()) return tip;
    return QStringLiteral("%1 (%2)").arg(tip, keys.constFirst().toString(QKeySequence::NativeText));
}

}  // namespace

VistaInforme::VistaInforme(Escritorio& escritorio, std::shared_ptr<report::Document> document)
    : escritorio_(escritorio),
      document_(std::move(document)),
      pages_(new PageView(document_, this)),
      pageBox_(new QSpinBox(this)),
      pageCount_(new QLabel(this)),
      zoomBox_(new QComboBox(this)),
      state_(new QLabel(this)),
      progress_(new QProgressBar(this)),
      cancel_(new QPushButton(QStringLiteral("Ca&ncelar"), this)),
      reading_(new QTimer(this)) {
    document_->setMeasure(std::make_shared<FontMeasure>());
    setObjectName(QStringLiteral("VistaInforme"));
    setWindowTitle(document_->report().title);
    build();
    connect(pages_, &PageView::pageChanged, this, &VistaInforme::showState);
    connect(pages_, &PageView::zoomChanged, this, &VistaInforme::showZoom);
    connect(reading_, &QTimer::timeout, this, &VistaInforme::readOn);
    reading_->start(0);
    showState();
    showZoom();
    pages_->setFocus();
}

VistaInforme::~VistaInforme() {
    // The boxes of the bar go after the page, and lose the focus on the way.
    pageBox_->disconnect(this);
    zoomBox_->disconnect(this);
}

// --- What stands where

QAction* VistaInforme::addCommand(QToolBar& bar, const QString& icon, const QString& text, const QString& tip,
                                  const QList<QKeySequence>& keys, const std::function<void()>& command) {
    auto* action = new QAction(QIcon(icon), text, this);
    action->setShortcuts(keys);
    action->setToolTip(keysTip(tip, keys));
    connect(action, &QAction::triggered, this, [command] { command(); });
    addAction(action);
    bar.addAction(action);
    return action;
}

void VistaInforme::build() {
    auto* bar = new QToolBar(this);
    bar->setIconSize({20, 20});
    buildBar(*bar);
    cancel_->setToolTip(QStringLiteral("Dejar la impresión o la escritura del fichero"));
    connect(cancel_, &QPushButton::clicked, this, &VistaInforme::cancelJob);
    progress_->setRange(0, 100);
    progress_->setFixedWidth(200);
    progress_->hide();
    cancel_->hide();

    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(10, 4, 10, 4);
    foot->addWidget(state_, 1);
    foot->addWidget(progress_);
    foot->addWidget(cancel_);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(bar);
    all->addWidget(pages_, 1);
    all->addLayout(foot);
}

void VistaInforme::buildBar(QToolBar& bar) {
    const auto icon = [](const char* name) {
        return QStringLiteral(":/iconos/informe/%1.svg").arg(QLatin1String(name));
    };
    const auto withText = [&](QAction* action) {
        if (auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(action)))
            button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        jobActions_.push_back(action);
    };
    const auto key = [](int code) { return QKeySequence(code); };
    withText(addCommand(bar, QStringLiteral(":/iconos/Imprimir.svg"), QStringLiteral("Imprimir…"),
                        QStringLiteral("Imprimir el informe"), {QKeySequence(Qt::CTRL | Qt::Key_P)},
                        [this] { print(); }));
    withText(addCommand(bar, icon("pdf"), QStringLiteral("Guardar PDF…"),
                        QStringLiteral("Guardar el informe como documento PDF"),
                        {QKeySequence(Qt::CTRL | Qt::Key_S)}, [this] { savePdf(); }));
    withText(addCommand(bar, icon("html"), QStringLiteral("Exportar…"),
                        QStringLiteral("Exportar el informe como página HTML"),
                        {QKeySequence(Qt::CTRL | Qt::Key_E)}, [this] { exportHtml(); }));
    bar.addSeparator();
    back_[0] = addCommand(
        bar, icon("primera"), QStringLiteral("Primera página"), QStringLiteral("Primera página"),
        {QKeySequence(Qt::CTRL | Qt::Key_Home), key(Qt::Key_Home)}, [this] { pages_->setPage(0); });
    back_[1] = addCommand(bar, icon("anterior"), QStringLiteral("Página anterior"),
                          QStringLiteral("Página anterior"), {key(Qt::Key_PageUp)},
                          [this] { pages_->setPage(pages_->page() - 1); });
    pageBox_->setButtonSymbols(QAbstractSpinBox::NoButtons);
    pageBox_->setAlignment(Qt::AlignRight);
    pageBox_->setFixedWidth(60);
    pageBox_->setKeyboardTracking(false);
    pageBox_->setAccessibleName(QStringLiteral("Página"));
    pageBox_->setToolTip(QStringLiteral("Ir a una página (Ctrl+G)"));
    connect(pageBox_, &QSpinBox::valueChanged, this, [this](int page) { pages_->setPage(page - 1); });
    connect(pageBox_, &QSpinBox::editingFinished, this, [this] { pages_->setFocus(); });
    auto* goTo = new QAction(this);
    goTo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_G));
    connect(goTo, &QAction::triggered, this, [this] {
        pageBox_->setFocus(Qt::ShortcutFocusReason);
        pageBox_->selectAll();
    });
    addAction(goTo);
    bar.addWidget(pageBox_);
    pageCount_->setContentsMargins(6, 0, 6, 0);
    bar.addWidget(pageCount_);
    forward_[0] = addCommand(bar, icon("siguiente"), QStringLiteral("Página siguiente"),
                             QStringLiteral("Página siguiente"), {key(Qt::Key_PageDown)},
                             [this] { pages_->setPage(pages_->page() + 1); });
    forward_[1] =
        addCommand(bar, icon("ultima"), QStringLiteral("Última página"), QStringLiteral("Última página"),
                   {QKeySequence(Qt::CTRL | Qt::Key_End), key(Qt::Key_End)},
                   [this] { pages_->setPage(document_->pagesSoFar() - 1); });
    bar.addSeparator();
    buildZoom(bar);
    auto* space = new QWidget(&bar);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar.addWidget(space);
    withText(addCommand(bar, icon("cerrar"), QStringLiteral("Cerrar"),
                        QStringLiteral("Cerrar la vista previa"),
                        {key(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}, [this] { close(); }));
    jobActions_.pop_back();  // closing waits for the job, but may be asked for
}

void VistaInforme::buildZoom(QToolBar& bar) {
    const auto icon = [](const char* name) {
        return QStringLiteral(":/iconos/informe/%1.svg").arg(QLatin1String(name));
    };
    addCommand(bar, icon("menos"), QStringLiteral("Reducir"), QStringLiteral("Reducir"),
               {QKeySequence(Qt::CTRL | Qt::Key_Minus)}, [this] { pages_->zoomBy(-1); });
    for (const int percent : kPercents)
        zoomBox_->addItem(QStringLiteral("%1 %").arg(percent), percent);
    zoomBox_->setMinimumWidth(90);
    zoomBox_->setPlaceholderText(QStringLiteral("100 %"));
    zoomBox_->setAccessibleName(QStringLiteral("Tamaño de la página"));
    zoomBox_->setToolTip(QStringLiteral("Tamaño de la página"));
    connect(zoomBox_, &QComboBox::activated, this, &VistaInforme::chooseZoom);
    bar.addWidget(zoomBox_);
    addCommand(bar, icon("mas"), QStringLiteral("Ampliar"), QStringLiteral("Ampliar"),
               {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
               [this] { pages_->zoomBy(1); });
    addCommand(bar, icon("ancho"), QStringLiteral("Ajustar al ancho"), QStringLiteral("Ajustar al ancho"),
               {QKeySequence(Qt::CTRL | Qt::Key_1)}, [this] { pages_->setZoom(PageView::Zoom::Width); });
    addCommand(bar, icon("entera"), QStringLiteral("Página entera"), QStringLiteral("Página entera"),
               {QKeySequence(Qt::CTRL | Qt::Key_0)}, [this] { pages_->setZoom(PageView::Zoom::Whole); });
}

// --- What is shown

/// The rows that are missing come in between events.
void VistaInforme::readOn() {
    const bool wasLast = pages_->page() + 1 >= document_->pagesSoFar();
    const bool done = document_->read(kReadingTime);
    if (done) reading_->stop();
    // A page that others follow changes only where the rows of a group stand apart, and in the number of
    // pages: it is painted anew at the end.
    if (done || wasLast) pages_->rowsArrived();
    showState();
}

void VistaInforme::showState() {
    const int pages = document_->pagesSoFar();
    const int page = pages_->page();
    const QSignalBlocker quiet(pageBox_);
    pageBox_->setRange(1, pages);
    pageBox_->setValue(page + 1);
    const QString more = document_->isRead() ? QString() : QStringLiteral("…");
    pageCount_->setText(QStringLiteral("de %1%2").arg(spanishNumber(pages), more));
    for (QAction* action : back_)
        action->setEnabled(page > 0);
    for (QAction* action : forward_)
        action->setEnabled(page + 1 < pages);
    if (job_) return;
    state_->setText(
        QStringLiteral("Página %1 de %2%3 · %4%3")
            .arg(spanishNumber(page + 1), spanishNumber(pages), more,
                 counted(document_->rowsRead(), QStringLiteral("fila"), QStringLiteral("filas"))));
}

void VistaInforme::showZoom() {
    const int percent = pages_->percent();
    const int known = pages_->zoom() == PageView::Zoom::Percent ? zoomBox_->findData(percent) : -1;
    zoomBox_->setPlaceholderText(QStringLiteral("%1 %").arg(percent));
    zoomBox_->setCurrentIndex(known);
}

void VistaInforme::chooseZoom(int index) {
    pages_->setPercent(zoomBox_->itemData(index).toInt());
    pages_->setFocus();
}

// --- Printing and saving

void VistaInforme::run(std::unique_ptr<ReportJob> job, const QString& doing, const QString& done) {
    if (job_) return;
    job_ = std::move(job);
    connect(job_.get(), &ReportJob::progressed, progress_, &QProgressBar::setValue);
    connect(job_.get(), &ReportJob::finished, this,
            [this, done](const QString& error, bool cancelled) { jobEnded(error, cancelled, done); });
    for (QAction* action : jobActions_)
        action->setEnabled(false);
    state_->setText(doing);
    progress_->setValue(0);
    progress_->show();
    cancel_->show();
    job_->start();
}

void VistaInforme::jobEnded(const QString& error, bool cancelled, const QString& done) {
    job_.release()->deleteLater();
    progress_->hide();
    cancel_->hide();
    for (QAction* action : jobActions_)
        action->setEnabled(true);
    pages_->setFocus();
    showState();
    state_->setText(state_->text() + QStringLiteral(" · ") +
                    (cancelled         ? QStringLiteral("Cancelado")
                     : error.isEmpty() ? done
                                       : QStringLiteral("No se ha hecho")));
    if (!error.isEmpty()) {
        escritorio_.guard([&] { forms::MsgBox(error, forms::box::Critical, windowTitle()); });
    }
}

void VistaInforme::cancelJob() {
    if (job_) job_->cancel();
}

void VistaInforme::print() {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setPageSize(QPageSize(QPageSize::A4));
    printer->setPageOrientation(document_->report().orientation == report::Orientation::Portrait
                                    ? QPageLayout::Portrait
                                    : QPageLayout::Landscape);
    QPrintDialog dialogue(printer.get(), this);
    dialogue.setWindowTitle(QStringLiteral("Imprimir"));
    dialogue.setOption(QAbstractPrintDialog::PrintCurrentPage, true);
    if (document_->isRead()) dialogue.setMinMax(1, document_->pageCount());
    if (dialogue.exec() != QDialog::Accepted) return;
    QPageRanges ranges = printer->pageRanges();
    if (printer->printRange() == QPrinter::AllPages) ranges.clear();
    if (printer->printRange() == QPrinter::CurrentPage) ranges.addPage(pages_->page() + 1);
    run(printJob(document_, std::move(printer), ranges), QStringLiteral("Imprimiendo…"),
        QStringLiteral("Enviado a la impresora"));
}

void VistaInforme::printOn(std::unique_ptr<QPrinter> printer) {
    run(printJob(document_, std::move(printer), {}), QStringLiteral("Imprimiendo…"),
        QStringLiteral("Enviado a la impresora"));
}

/// In the documents' folder, by the report's title and today's date.
QString VistaInforme::suggestedFile(const QString& extension) const {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QString name = QStringLiteral("%1 %2.%3")
                       .arg(document_->report().title, QDate::currentDate().toString(Qt::ISODate), extension);
    name.replace(u'/', u'-');
    return QDir(folder).filePath(name);
}

void VistaInforme::savePdf() {
    const auto file = escritorio_.SaveFileDialogue({QStringLiteral("Guardar como PDF"), QString(),
                                                    QStringLiteral("Documento PDF|*.pdf"),
                                                    suggestedFile(QStringLiteral("pdf"))});
    if (!file) return;
    run(pdfJob(document_, *file), QStringLiteral("Guardando el PDF…"), QStringLiteral("PDF guardado"));
}

void VistaInforme::exportHtml() {
    const auto& formats = document_->report().exportFormats;
    if (formats.empty()) return;
    const report::ExportFormat& format = formats.front();
    const QString text = format.fileFormatText.section(u'(', 0, 0).trimmed();
    const auto file = escritorio_.SaveFileDialogue({QStringLiteral("Exportar"), QString(),
                                                    text + u'|' + format.fileFilter.toLower(),
                                                    suggestedFile(QStringLiteral("htm"))});
    if (!file) return;
    run(htmlJob(document_, format, *file), QStringLiteral("Exportando…"),
        QStringLiteral("Informe exportado"));
}

// --- Closing

void VistaInforme::keyPressEvent(QKeyEvent* event) {
    // Enter in the page box must not reach a button.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return;
    QWidget::keyPressEvent(event);
}

void VistaInforme::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (closing_) return;
    closing_ = true;
    if (job_) state_->setText(QStringLiteral("La ventana se cerrará al terminar…"));
    escritorio_.guard([this] { document_->close(); });
    closing_ = false;
    reading_->stop();
    event->accept();
    if (closed) std::exchange(closed, nullptr)();
}

}  // namespace tarmel::desktop
