#pragma once

#include <QObject>
#include <QPageRanges>
#include <QString>
#include <QTimer>
#include <memory>
#include <optional>

#include "platform/report/Document.h"

class QPrinter;

namespace tarmel::desktop {

/// Printing or saving a report, a page or a few rows at a time while events run, so that the window stays
/// alive and the job can be given up. While it goes on the document counts one asynchronous operation.
class ReportJob : public QObject {
    Q_OBJECT
 public:
    explicit ReportJob(std::shared_ptr<report::Document> document);
    ~ReportJob() override;

    void start();
    /// Gives up: nothing is left behind. Ends with no error.
    void cancel();

 Q_SIGNALS:
    void progressed(int percent);
    /// Done (no text, not cancelled), given up, or refused for this reason.
    void finished(const QString& error, bool cancelled);

 protected:
    /// All rows have been read.
    virtual void begin() = 0;
    /// A little work; false when there is none left. `percent` is what is done.
    virtual bool step(int& percent) = 0;
    /// Makes it whole: nothing of a file can be seen before.
    virtual void complete() {}
    virtual void abandon() {}
    [[nodiscard]] report::Document& document() { return *document_; }

 private:
    void work();
    void end(const QString& error, bool cancelled);

    std::shared_ptr<report::Document> document_;
    std::optional<report::Document::Operation> operation_;
    QTimer timer_;
    bool begun_ = false;
};

/// The pages of these ranges (all when there are none), in the printer's order.
[[nodiscard]] std::unique_ptr<ReportJob> printJob(std::shared_ptr<report::Document> document,
                                                  std::unique_ptr<QPrinter> printer, QPageRanges ranges);
/// Both write beside the file and take its name when all is written: a disk that fills up leaves the old file
/// as it was.
[[nodiscard]] std::unique_ptr<ReportJob> pdfJob(std::shared_ptr<report::Document> document,
                                                const QString& file);
[[nodiscard]] std::unique_ptr<ReportJob> htmlJob(std::shared_ptr<report::Document> document,
                                                 const report::ExportFormat& format, const QString& file);

}  // namespace tarmel::desktop
