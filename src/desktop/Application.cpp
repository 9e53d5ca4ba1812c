#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QStyleFactory>
#include <QTranslator>

#include "desktop/Escritorio.h"
#include "platform/forms/Host.h"

static void loadResources() {
    // A static library's resources are only there once somebody asks for them.
    Q_INIT_RESOURCE(tarmel);
}

namespace tarmel::desktop {

namespace {

/// Our own colours whatever the desktop's: the style sheet counts on a light ground.
QPalette lightPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xF3, 0xF6, 0xF7));
    palette.setColor(QPalette::WindowText, QColor(0x22, 0x34, 0x3A));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xF5, 0xF8, 0xF8));
    palette.setColor(QPalette::Text, QColor(0x22, 0x34, 0x3A));
    palette.setColor(QPalette::Button, QColor(0xF3, 0xF6, 0xF7));
    palette.setColor(QPalette::ButtonText, QColor(0x22, 0x34, 0x3A));
    palette.setColor(QPalette::Highlight, QColor(0x0F, 0x6E, 0x6E));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x0F, 0x6E, 0x6E));
    palette.setColor(QPalette::PlaceholderText, QColor(0x8A, 0x97, 0x9C));
    return palette;
}

}  // namespace

void prepareApplication() {
    loadResources();
    QApplication::setApplicationName(forms::kProgramName);
    QApplication::setApplicationDisplayName(QString());
    QApplication::setQuitOnLastWindowClosed(false);
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    // The toolkit's own words, in file dialogues and context menus, where its translation is installed.
    static QTranslator translator;
    if (translator.load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&translator);
    }
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(lightPalette());
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/iconos/tarmel.svg")));
    QFile sheet(QStringLiteral(":/estilo.qss"));
    if (sheet.open(QFile::ReadOnly)) qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

}  // namespace tarmel::desktop
