#include "desktop/HelpWindow.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

namespace tarmel::desktop {

HelpWindow::HelpWindow() : pages_(new QTextBrowser(this)) {
    setWindowTitle(QStringLiteral("Ayuda de Tarmel"));
    pages_->setOpenExternalLinks(false);
    pages_->setFrameShape(QFrame::NoFrame);
    pages_->document()->setDocumentMargin(24);
    auto* bar = new QToolBar(this);
    bar->addAction(QStringLiteral("Inicio"), pages_, &QTextBrowser::home);
    QAction* back = bar->addAction(QStringLiteral("Atrás"), pages_, &QTextBrowser::backward);
    QAction* forward = bar->addAction(QStringLiteral("Adelante"), pages_, &QTextBrowser::forward);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(pages_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(pages_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(pages_);
    resize(820, 680);
}

void HelpWindow::open(const QString& file) {
    if (QFileInfo::exists(file)) {
        pages_->setSource(QUrl::fromLocalFile(file));
    } else {
        pages_->setPlainText(QStringLiteral("No se ha encontrado el fichero de ayuda:\n%1").arg(file));
    }
    show();
    raise();
    activateWindow();
    pages_->setFocus();
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

}  // namespace tarmel::desktop
