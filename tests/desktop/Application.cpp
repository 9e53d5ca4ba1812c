#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "desktop/Escritorio.h"

namespace {

/// Warnings of the toolkit are faults of ours: a signal joined to nothing, a layout set twice.
void failOnWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    // Said by every platform without a window system behind it.
    if (text.contains(QLatin1String("This plugin does not support"))) return;
    ADD_FAILURE() << "Qt: " << text.toStdString();
}

class ApplicationEnvironment : public testing::Environment {
 public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<QApplication>(argc_, argv_);
        qInstallMessageHandler(failOnWarning);
        tarmel::desktop::prepareApplication();
    }
    void TearDown() override {
        qInstallMessageHandler(nullptr);
        application_.reset();
    }

 private:
    int argc_ = 1;
    char name_[8] = "prueba";
    char* argv_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> application_;
};

const auto* const environment = testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

}  // namespace
