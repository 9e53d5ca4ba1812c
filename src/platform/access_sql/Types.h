#pragma once

#include <QStringView>

#include "platform/access_sql/Translator.h"

namespace tarmel::access_sql {

/// What a type is when values meet: this decides how they are compared, joined and added.
enum class Kind { Unknown, Number, Boolean, Date, Text, Binary };

[[nodiscard]] Kind kindOf(Type type);
[[nodiscard]] bool isWholeType(Type type);
/// The type of a value that may be either; Unknown is as good as any other.
[[nodiscard]] Type commonType(Type a, Type b);

/// Whether + joins: two texts, or a text and what has no type of its own (Null, a parameter).
[[nodiscard]] bool joinsTexts(Kind a, Kind b);

/// Adds the name between quotes, those inside it doubled. Most of what the writer writes is names.
void appendQuoted(QByteArray& text, QStringView name);

/// A type as CREATE TABLE names it.
struct TypeName {
    QStringView name;
    Type type;
    int width = 0;       ///< when none is given
    bool sized = false;  ///< may be followed by "(n)"
};

/// Null when there is no such type.
[[nodiscard]] const TypeName* typeNamed(QStringView name);
/// Raises the statement error for a width or scale that the type cannot have.
void checkSize(ColumnDef& column);

}  // namespace tarmel::access_sql
