#include "desktop/ReportJobs.h"

#include <QDir>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <algorithm>
#include <vector>

#include "desktop/ReportPainter.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Host.h"
#include "platform/report/HtmlExport.h"

namespace tarmel::desktop {

namespace {

constexpr int kReadingTime = 15;  // milliseconds between two looks at the events
constexpr int kPdfResolution = 1200;

[[noreturn]] void fail(const QString& text) {
    throw basic::RuntimeError(basic::error::FileAccess, text, forms::kProgramName);
}

void place(QPagedPaintDevice& device, const report::Report& report) {
    device.setPageLayout(
        {QPageSize(QPageSize::A4),
         report.orientation == report::Orientation::Portrait ? QPageLayout::Portrait : QPageLayout::Landscape,
         QMarginsF(), QPageLayout::Millimeter});
}

/// The file under another name until it is whole.
class SavedFile {
 public:
    explicit SavedFile(const QString& path) : file_(path) {}
    void open() {
        if (!file_.open(QIODevice::WriteOnly)) refuse();
    }
    [[nodiscard]] QIODevice& device() { return file_; }
    void commit() {
        if (!file_.commit()) refuse();
    }
    void abandon() { file_.cancelWriting(); }
    [[noreturn]] void refuse() {
        const bool mayWrite =
            file_.error() == QFileDevice::WriteError || file_.error() == QFileDevice::ResourceError;
        fail(QStringLiteral("No se ha podido guardar el fichero «%1».\n\n%2")
                 .arg(QDir::toNativeSeparators(file_.fileName()),
                      mayWrite ? QStringLiteral("Compruebe que queda espacio en el disco.")
                               : QStringLiteral(
                                     "Compruebe que la carpeta existe y que se puede escribir en ella.")));
    }

 private:
    QSaveFile file_;
};

/// Pages one by one onto a paged device.
class PageJob : public ReportJob {
 public:
    PageJob(std::shared_ptr<report::Document> document, QPageRanges ranges)
        : ReportJob(std::move(document)), ranges_(std::move(ranges)) {}

 protected:
    void collectPages(bool lastFirst) {
        const int count = document().pageCount();
        for (int page = 1; page <= count; ++page) {
            if (ranges_.isEmpty() || ranges_.contains(page)) pages_.push_back(page - 1);
        }
        if (lastFirst) std::reverse(pages_.begin(), pages_.end());
    }
    void paintOn(QPagedPaintDevice& device, const QString& refused) {
        device_ = &device;
        if (!painter_.begin(&device)) fail(refused);
        const report::Report& report = document().report();
        // On paper of another size the page is made to fit.
        const double across = device.width() / report.paperWidth();
        const double down = device.height() / report.paperHeight();
        unitsPerMillimetre_ = std::min(across, down);
    }
    bool step(int& percent) override {
        if (next_ < pages_.size()) {
            if (next_ > 0 && !device_->newPage()) fail(QStringLiteral("La impresora no admite más páginas."));
            paintPage(painter_, document().page(pages_[next_]), unitsPerMillimetre_);
            ++next_;
        }
        percent = pages_.empty() ? 100 : static_cast<int>(100 * next_ / pages_.size());
        return next_ < pages_.size();
    }
    [[nodiscard]] bool isPainting() const { return painter_.isActive(); }
    void stopPainting() {
        if (painter_.isActive()) painter_.end();
    }

 private:
    QPageRanges ranges_;
    std::vector<int> pages_;
    std::size_t next_ = 0;
    QPagedPaintDevice* device_ = nullptr;
    QPainter painter_;
    double unitsPerMillimetre_ = 1;
};

class PrintJob final : public PageJob {
 public:
    PrintJob(std::shared_ptr<report::Document> document, std::unique_ptr<QPrinter> printer,
             QPageRanges ranges)
        : PageJob(std::move(document), std::move(ranges)), printer_(std::move(printer)) {}
    ~PrintJob() override {
        // The program ends: what is half printed is no report.
        if (isPainting()) PrintJob::abandon();
    }

 protected:
    void begin() override {
        printer_->setFullPage(true);
        printer_->setDocName(document().report().title);
        collectPages(printer_->pageOrder() == QPrinter::LastPageFirst);
        paintOn(*printer_,
                QStringLiteral("No se ha podido imprimir.\n\nCompruebe que la impresora está lista."));
    }
    void complete() override { stopPainting(); }
    void abandon() override {
        printer_->abort();
        stopPainting();
    }

 private:
    std::unique_ptr<QPrinter> printer_;
};

class PdfJob final : public PageJob {
 public:
    PdfJob(std::shared_ptr<report::Document> document, const QString& file)
        : PageJob(std::move(document), {}), file_(file) {}
    ~PdfJob() override { stopPainting(); }

 protected:
    void begin() override {
        file_.open();
        writer_ = std::make_unique<QPdfWriter>(&file_.device());
        writer_->setResolution(kPdfResolution);
        writer_->setTitle(document().report().title);
        writer_->setCreator(forms::kProgramName);
        place(*writer_, document().report());
        collectPages(false);
        paintOn(*writer_, QStringLiteral("No se ha podido escribir el documento PDF."));
    }
    void complete() override {
        stopPainting();
        writer_.reset();
        file_.commit();
    }
    void abandon() override {
        stopPainting();
        file_.abandon();
    }

 private:
    SavedFile file_;
    std::unique_ptr<QPdfWriter> writer_;
};

class HtmlJob final : public ReportJob {
 public:
    HtmlJob(std::shared_ptr<report::Document> document, report::ExportFormat format, const QString& file)
        : ReportJob(std::move(document)), format_(std::move(format)), file_(file) {}

 protected:
    void begin() override {
        file_.open();
        export_ = std::make_unique<report::HtmlExport>(document(), format_, file_.device(), &reportPicture);
    }
    bool step(int& percent) override {
        try {
            const bool more = export_->step();
            percent = static_cast<int>(100 * export_->progress());
            return more;
        } catch (const basic::RuntimeError&) {
            file_.refuse();
        }
    }
    void complete() override { file_.commit(); }
    void abandon() override { file_.abandon(); }

 private:
    report::ExportFormat format_;
    SavedFile file_;
    std::unique_ptr<report::HtmlExport> export_;
};

}  // namespace

ReportJob::ReportJob(std::shared_ptr<report::Document> document) : document_(std::move(document)) {
    connect(&timer_, &QTimer::timeout, this, &ReportJob::work);
}

ReportJob::~ReportJob() = default;

void ReportJob::start() {
    operation_.emplace(*document_);
    timer_.start(0);
}

void ReportJob::cancel() {
    if (!operation_) return;
    if (begun_) abandon();
    end(QString(), true);
}

void ReportJob::work() {
    try {
        if (!document_->isRead()) {
            document_->read(kReadingTime);
            return;
        }
        if (!begun_) {
            begun_ = true;
            return begin();
        }
        int percent = 0;
        const bool more = step(percent);
        Q_EMIT progressed(percent);
        if (more) return;
        complete();
    } catch (const basic::RuntimeError& error) {
        abandon();
        return end(error.description(), false);
    }
    end(QString(), false);
}

void ReportJob::end(const QString& error, bool cancelled) {
    timer_.stop();
    operation_.reset();
    Q_EMIT finished(error, cancelled);
}

std::unique_ptr<ReportJob> printJob(std::shared_ptr<report::Document> document,
                                    std::unique_ptr<QPrinter> printer, QPageRanges ranges) {
    return std::make_unique<PrintJob>(std::move(document), std::move(printer), std::move(ranges));
}

std::unique_ptr<ReportJob> pdfJob(std::shared_ptr<report::Document> document, const QString& file) {
    return std::make_unique<PdfJob>(std::move(document), file);
}

std::unique_ptr<ReportJob> htmlJob(std::shared_ptr<report::Document> document,
                                   const report::ExportFormat& format, const QString& file) {
    return std::make_unique<HtmlJob>(std::move(document), format, file);
}

}  // namespace tarmel::desktop
