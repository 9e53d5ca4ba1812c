#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "platform/report/Document.h"

class QComboBox;
class QLabel;
class QPrinter;
class QProgressBar;
class QPushButton;
class QSpinBox;
class QTimer;
class QToolBar;

namespace tarmel::desktop {

class Escritorio;
class PageView;
class ReportJob;

/// A report's preview: its pages one by one, from where it is printed and saved.
class VistaInforme final : public QWidget {
    Q_OBJECT
 public:
    VistaInforme(Escritorio& escritorio, std::shared_ptr<report::Document> document);
    ~VistaInforme() override;

    [[nodiscard]] const std::shared_ptr<report::Document>& document() const { return document_; }
    [[nodiscard]] PageView& pages() { return *pages_; }
    /// Something is being printed or saved.
    [[nodiscard]] bool isWorking() const { return job_ != nullptr; }

    /// Asks where to, then goes on while events run.
    void print();
    void savePdf();
    void exportHtml();
    /// Prints all pages without asking.
    void printOn(std::unique_ptr<QPrinter> printer);
    void cancelJob();

    /// The window has closed; called once.
    std::function<void()> closed;

 protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    QAction* addCommand(QToolBar& bar, const QString& icon, const QString& text, const QString& tip,
                        const QList<QKeySequence>& keys, const std::function<void()>& command);
    void build();
    void buildBar(QToolBar& bar);
    void buildZoom(QToolBar& bar);
    void readOn();
    void showState();
    void showZoom();
    void chooseZoom(int index);
    void run(std::unique_ptr<ReportJob> job, const QString& doing, const QString& done);
    void jobEnded(const QString& error, bool cancelled, const QString& done);
    [[nodiscard]] QString suggestedFile(const QString& extension) const;

    Escritorio& escritorio_;
    std::shared_ptr<report::Document> document_;
    PageView* pages_;  // these are children of this window
    QSpinBox* pageBox_;
    QLabel* pageCount_;
    QComboBox* zoomBox_;
    QLabel* state_;
    QProgressBar* progress_;
    QPushButton* cancel_;
    QTimer* reading_;
    std::vector<QAction*> jobActions_;
    QAction* back_[2] = {};
    QAction* forward_[2] = {};
    std::unique_ptr<ReportJob> job_;
    bool closing_ = false;
};

}  // namespace tarmel::desktop
