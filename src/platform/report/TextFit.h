#pragma once

#include <QStringList>

#include "platform/report/TextMeasure.h"

namespace tarmel::report {

/// The text in one line of at most so many millimetres; "…" stands where something was cut off.
[[nodiscard]] QString cutLine(const QString& text, double width, const TextMeasure& measure,
                              const Font& font);

/// The text in lines of at most so many millimetres, broken at blanks, or inside a word that fills a line.
/// Where more than `most` lines are needed (0: any number) the last one is cut.
[[nodiscard]] QStringList wrapLines(const QString& text, double width, int most, const TextMeasure& measure,
                                    const Font& font);

}  // namespace tarmel::report
