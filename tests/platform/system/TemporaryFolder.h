#pragma once

#include <QFile>
#include <QTemporaryDir>

/// A folder of its own for one test, with the files that the test asks for.
class TemporaryFolder {
 public:
    [[nodiscard]] QString path() const { return folder_.path(); }
    [[nodiscard]] QString path(const QString& name) const { return folder_.filePath(name); }

    QString write(const QString& name, const QByteArray& bytes = "x") const {
        QFile file(path(name));
        if (file.open(QIODevice::WriteOnly)) file.write(bytes);
        return path(name);
    }
    [[nodiscard]] QByteArray read(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(not there)");
    }

 private:
    QTemporaryDir folder_;
};
