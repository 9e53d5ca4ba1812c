#include "platform/access_sql/FunctionTable.h"

#include <algorithm>
#include <array>

namespace tarmel::access_sql {

namespace {

using enum Function;
constexpr bool kAggregate = true;
constexpr bool kPlain = false;

// Sorted by name. A function with neither an own nor a plain name is written by the writer itself.
constexpr std::array kFunctions = {
    FunctionFacts{Abs, u"ABS", 1, 1, Type::Unknown, kPlain, nullptr, "abs"},
    FunctionFacts{Avg, u"AVG", 1, 1, Type::Double, kAggregate, nullptr, "avg"},
    FunctionFacts{CDate, u"CDATE", 1, 1, Type::Date},
    FunctionFacts{CDbl, u"CDBL", 1, 1, Type::Double},
    FunctionFacts{CInt, u"CINT", 1, 1, Type::Integer},
    FunctionFacts{CLng, u"CLNG", 1, 1, Type::Long},
    FunctionFacts{Count, u"COUNT", 1, 1, Type::Long, kAggregate, nullptr, "count"},
    FunctionFacts{CStr, u"CSTR", 1, 1, Type::Text},
    FunctionFacts{Day, u"DAY", 1, 1, Type::Integer},
    FunctionFacts{Format, u"FORMAT", 1, 2, Type::Text, kPlain, "tarmel_format"},
    FunctionFacts{Hour, u"HOUR", 1, 1, Type::Integer},
    FunctionFacts{IIf, u"IIF", 3, 3, Type::Unknown},
    FunctionFacts{InStr, u"INSTR", 2, 3, Type::Long, kPlain, "tarmel_instr", "instr"},
    FunctionFacts{Int, u"INT", 1, 1, Type::Unknown, kPlain, "tarmel_int"},
    FunctionFacts{IsNull, u"ISNULL", 1, 1, Type::Integer},
    FunctionFacts{LCase, u"LCASE", 1, 1, Type::Text, kPlain, "tarmel_lcase", "lower"},
    FunctionFacts{Left, u"LEFT", 2, 2, Type::Text, kPlain, "tarmel_left"},
    FunctionFacts{Len, u"LEN", 1, 1, Type::Long, kPlain, nullptr, "length"},
    FunctionFacts{LTrim, u"LTRIM", 1, 1, Type::Text, kPlain, nullptr, "ltrim"},
    FunctionFacts{Max, u"MAX", 1, 1, Type::Unknown, kAggregate, nullptr, "max"},
    FunctionFacts{Mid, u"MID", 2, 3, Type::Text, kPlain, "tarmel_mid"},
    FunctionFacts{Min, u"MIN", 1, 1, Type::Unknown, kAggregate, nullptr, "min"},
    FunctionFacts{Minute, u"MINUTE", 1, 1, Type::Integer},
    FunctionFacts{Month, u"MONTH", 1, 1, Type::Integer},
    FunctionFacts{Nz, u"NZ", 1, 2, Type::Unknown},
    FunctionFacts{Right, u"RIGHT", 2, 2, Type::Text, kPlain, "tarmel_right"},
    FunctionFacts{RTrim, u"RTRIM", 1, 1, Type::Text, kPlain, nullptr, "rtrim"},
    FunctionFacts{Second, u"SECOND", 1, 1, Type::Integer},
    FunctionFacts{Sum, u"SUM", 1, 1, Type::Double, kAggregate, nullptr, "sum"},
    FunctionFacts{Trim, u"TRIM", 1, 1, Type::Text, kPlain, nullptr, "trim"},
    FunctionFacts{UCase, u"UCASE", 1, 1, Type::Text, kPlain, "tarmel_ucase", "upper"},
    FunctionFacts{Val, u"VAL", 1, 1, Type::Double},
    FunctionFacts{Year, u"YEAR", 1, 1, Type::Integer},
};

constexpr bool isSorted() {
    for (std::size_t i = 1; i < kFunctions.size(); ++i) {
        const QStringView a = kFunctions[i - 1].name, b = kFunctions[i].name;
        for (qsizetype k = 0;; ++k) {
            if (k >= b.size()) return false;
            if (k >= a.size() || a.utf16()[k] < b.utf16()[k]) break;
            if (a.utf16()[k] > b.utf16()[k]) return false;
        }
    }
    return true;
}
static_assert(isSorted());

}  // namespace

const FunctionFacts* functionNamed(QStringView name) {
    const auto precedes = [](const FunctionFacts& facts, QStringView wanted) {
        return facts.name.compare(wanted, Qt::CaseInsensitive) < 0;
    };
    const auto found = std::lower_bound(kFunctions.begin(), kFunctions.end(), name, precedes);
    if (found == kFunctions.end() || found->name.compare(name, Qt::CaseInsensitive) != 0) return nullptr;
    return &*found;
}

}  // namespace tarmel::access_sql
