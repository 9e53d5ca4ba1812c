#pragma once

struct sqlite3;

namespace tarmel::access_sql {

/// Registers on the connection what SQLite lacks: the dialect's functions (Val, IIf is written as CASE,
/// Format, CStr ...) under names of our own, and the Spanish collation. None of them appears inside the file.
void registerFunctions(sqlite3* db);

/// The name of the Spanish collation: no regard to case, accents apart, ñ behind n.
inline constexpr const char* kSpanishCollation = "ES";

}  // namespace tarmel::access_sql
