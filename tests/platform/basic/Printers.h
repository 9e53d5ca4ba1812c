#pragma once

#include <QString>
#include <ostream>

inline void PrintTo(const QString& s, std::ostream* out) {
    *out << '"' << s.toStdString() << '"';
}
