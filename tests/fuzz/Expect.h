#pragma once

#include <QString>
#include <cstdio>
#include <cstdlib>

/// Ends the run when a property does not hold: a fuzzer takes the abort for a finding.
inline void expect(bool holds, const char* property, const QString& detail = QString()) {
    if (holds) return;
    std::fprintf(stderr, "Broken: %s\n%s\n", property, detail.toUtf8().constData());
    std::abort();
}
