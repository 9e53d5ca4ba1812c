#include "platform/system/DataSource.h"

#include <QHash>

namespace tarmel::sys {

namespace {

QHash<QString, QString>& sources() {
    static QHash<QString, QString> pathByName;
    return pathByName;
}

}  // namespace

bool configure(const QString& name, const QString& driver, const QString& path) {
    if (name.isEmpty() || driver.isEmpty() || path.isEmpty()) return false;
    sources().insert(name.toCaseFolded(), path);
    return true;
}

std::optional<QString> dataSourcePath(const QString& name) {
    const auto found = sources().constFind(name.toCaseFolded());
    if (found == sources().constEnd()) return std::nullopt;
    return *found;
}

}  // namespace tarmel::sys
