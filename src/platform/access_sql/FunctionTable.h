#pragma once

#include <QStringView>

#include "platform/access_sql/Translator.h"

namespace tarmel::access_sql {

enum class Function {
    Abs,
    Avg,
    CDate,
    CDbl,
    CInt,
    CLng,
    CStr,
    Count,
    Day,
    Format,
    Hour,
    IIf,
    InStr,
    Int,
    IsNull,
    LCase,
    LTrim,
    Left,
    Len,
    Max,
    Mid,
    Min,
    Minute,
    Month,
    Nz,
    RTrim,
    Right,
    Second,
    Sum,
    Trim,
    UCase,
    Val,
    Year,
};

/// A function of the dialect as resolver and writer know it.
struct FunctionFacts {
    Function id;
    QStringView name;
    int fewest, most;  ///< arguments
    Type result;       ///< Unknown: follows from the arguments
    bool aggregate = false;
    const char* own = nullptr;    ///< the registered function that does the work
    const char* plain = nullptr;  ///< SQLite's own function of the same meaning, which views may use
};

/// Null when the dialect has no function of that name.
[[nodiscard]] const FunctionFacts* functionNamed(QStringView name);

}  // namespace tarmel::access_sql
