#include "platform/access_sql/Types.h"

#include <algorithm>
#include <array>

#include "platform/access_sql/Errors.h"

namespace tarmel::access_sql {

namespace {

constexpr int kWidestText = 255;
constexpr int kMostDigits = 15;  // that a number keeps through every conversion
constexpr int kMostDigitsNamed = 28;
constexpr bool kSized = true;

constexpr std::array kTypeNames = {
    TypeName{u"VARCHAR", Type::Text, kWidestText, kSized},
    TypeName{u"TEXT", Type::Text, kWidestText, kSized},
    TypeName{u"CHAR", Type::Text, kWidestText, kSized},
    TypeName{u"MEMO", Type::Memo},
    TypeName{u"LONGTEXT", Type::Memo},
    TypeName{u"INTEGER", Type::Long},
    TypeName{u"INT", Type::Long},
    TypeName{u"LONG", Type::Long},
    TypeName{u"SMALLINT", Type::Integer},
    TypeName{u"SHORT", Type::Integer},
    TypeName{u"BYTE", Type::Byte},
    TypeName{u"TINYINT", Type::Byte},
    TypeName{u"SINGLE", Type::Single},
    TypeName{u"REAL", Type::Single},
    TypeName{u"DOUBLE", Type::Double},
    TypeName{u"FLOAT", Type::Double},
    TypeName{u"NUMBER", Type::Double},
    TypeName{u"DECIMAL", Type::Decimal, kMostDigits, kSized},
    TypeName{u"NUMERIC", Type::Decimal, kMostDigits, kSized},
    TypeName{u"CURRENCY", Type::Currency},
    TypeName{u"MONEY", Type::Currency},
    TypeName{u"DATE", Type::Date},
    TypeName{u"DATETIME", Type::Date},
    TypeName{u"TIME", Type::Date},
    TypeName{u"BIT", Type::Boolean},
    TypeName{u"YESNO", Type::Boolean},
    TypeName{u"LOGICAL", Type::Boolean},
    TypeName{u"BOOLEAN", Type::Boolean},
    TypeName{u"BINARY", Type::Binary, 510, kSized},
    TypeName{u"GUID", Type::Guid},
    TypeName{u"COUNTER", Type::Counter},
    TypeName{u"AUTOINCREMENT", Type::Counter},
};

QByteArray rangeCheck(const QByteArray& name, const char* low, const char* high) {
    return name + " IS NULL OR (typeof(" + name + ") = 'integer' AND " + name + " BETWEEN " + low + " AND " +
           high + ")";
}

QByteArray numberCheck(const QByteArray& name, const QByteArray& below = {}) {
    QByteArray check = name + " IS NULL OR (typeof(" + name + ") IN ('integer', 'real')";
    if (!below.isEmpty()) check += " AND abs(" + name + ") < " + below;
    return check + ")";
}

QByteArray powerOfTen(int digits) {
    return "1" + QByteArray(digits, '0');
}

}  // namespace

Kind kindOf(Type type) {
    switch (type) {
        case Type::Boolean:
            return Kind::Boolean;
        case Type::Byte:
        case Type::Integer:
        case Type::Long:
        case Type::Single:
        case Type::Double:
        case Type::Currency:
        case Type::Decimal:
        case Type::Counter:
            return Kind::Number;
        case Type::Date:
            return Kind::Date;
        case Type::Text:
        case Type::Memo:
        case Type::Guid:
            return Kind::Text;
        case Type::Binary:
            return Kind::Binary;
        default:
            return Kind::Unknown;
    }
}

bool isWholeType(Type type) {
    return type == Type::Byte || type == Type::Integer || type == Type::Long || type == Type::Counter ||
           type == Type::Boolean;
}

Type commonType(Type a, Type b) {
    if (a == b || b == Type::Unknown) return a;
    if (a == Type::Unknown) return b;
    const Kind ka = kindOf(a), kb = kindOf(b);
    if (ka == Kind::Text || kb == Kind::Text) return ka == kb ? Type::Memo : Type::Unknown;
    const bool numbers =
        (ka == Kind::Number || ka == Kind::Boolean) && (kb == Kind::Number || kb == Kind::Boolean);
    if (!numbers) return Type::Unknown;
    return isWholeType(a) && isWholeType(b) ? Type::Long : Type::Double;
}

bool joinsTexts(Kind a, Kind b) {
    const auto mayBeText = [](Kind kind) { return kind == Kind::Text || kind == Kind::Unknown; };
    return mayBeText(a) && mayBeText(b) && (a == Kind::Text || b == Kind::Text);
}

const TypeName* typeNamed(QStringView name) {
    const auto found = std::find_if(kTypeNames.begin(), kTypeNames.end(), [&](const TypeName& facts) {
        return facts.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == kTypeNames.end() ? nullptr : &*found;
}

void checkSize(ColumnDef& column) {
    const bool decimal = column.type == Type::Decimal;
    const int widest = decimal ? kMostDigitsNamed : column.type == Type::Text ? kWidestText : 510;
    if (column.width < 1 || column.width > widest || column.scale > column.width) {
        throw statementError(QStringLiteral("El tamaño del campo '%1' no es válido.").arg(column.name));
    }
    if (!decimal) return;
    // More digits may be named than a number keeps; the file then refuses the numbers that have them.
    const int whole = column.width - column.scale;
    column.width = std::min(column.width, kMostDigits);
    column.scale = std::max(0, std::min(column.scale, column.width - std::min(whole, column.width)));
}

int TableDef::indexOf(QStringView column) const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const QString& own = columns[i].name;
        if (own.size() == column.size() && column.compare(own, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

void appendQuoted(QByteArray& text, QStringView name) {
    text += '"';
    for (qsizetype i = 0; i < name.size(); ++i) {
        const char16_t c = name[i].unicode();
        if (c >= 0x80) {
            text += name.sliced(i).toUtf8().replace('"', "\"\"");
            break;
        }
        if (c == u'"') text += '"';
        text += static_cast<char>(c);
    }
    text += '"';
}

QByteArray quoted(QStringView name) {
    QByteArray text;
    appendQuoted(text, name);
    return text;
}

QByteArray declaredType(const ColumnDef& column) {
    // A plain "INTEGER" primary key is the row number itself in SQLite: that is the counter and nothing else.
    switch (column.type) {
        case Type::Boolean:
            return "BIT";
        case Type::Byte:
            return "TINYINT";
        case Type::Integer:
            return "SMALLINT";
        case Type::Long:
            return "INT";
        case Type::Counter:
            return "INTEGER";
        case Type::Single:
            return "SINGLE";
        case Type::Double:
            return "DOUBLE";
        case Type::Currency:
            return "CURRENCY";
        case Type::Decimal:
            return "DECIMAL(" + QByteArray::number(column.width) + "," + QByteArray::number(column.scale) +
                   ")";
        case Type::Date:
            return "DATETIME";
        case Type::Text:
            return "VARCHAR(" + QByteArray::number(column.width) + ") COLLATE NOCASE";
        case Type::Memo:
            return "TEXT COLLATE NOCASE";
        case Type::Guid:
            return "CHAR(38) COLLATE NOCASE";
        case Type::Binary:
            return "BLOB(" + QByteArray::number(column.width) + ")";
        default:
            return "";
    }
}

QByteArray columnCheck(const ColumnDef& column) {
    const QByteArray name = quoted(column.name);
    const QByteArray width = QByteArray::number(column.width);
    switch (column.type) {
        case Type::Boolean:
            return name + " IN (0, -1)";
        case Type::Byte:
            return rangeCheck(name, "0", "255");
        case Type::Integer:
            return rangeCheck(name, "-32768", "32767");
        case Type::Long:
        case Type::Counter:
            return rangeCheck(name, "-2147483648", "2147483647");
        case Type::Single:
            return numberCheck(name, "3.5e38");
        case Type::Double:
            return numberCheck(name);
        case Type::Currency:
            return numberCheck(name, "922337203685478");
        case Type::Decimal:
            if (column.scale > 0) return numberCheck(name, powerOfTen(column.width - column.scale));
            return name + " IS NULL OR (typeof(" + name + ") = 'integer' AND abs(" + name + ") < " +
                   powerOfTen(column.width) + ")";
        case Type::Date:
            return name + " IS NULL OR (" + name +
                   " GLOB '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9] [0-9][0-9]:[0-9][0-9]:[0-9][0-9]' AND "
                   "datetime(" +
                   name + ", '+0 days') IS " + name + ")";
        case Type::Text:
            return name + " IS NULL OR (typeof(" + name + ") = 'text' AND length(" + name + ") <= " + width +
                   ")";
        case Type::Guid:
            return name + " IS NULL OR (typeof(" + name + ") = 'text' AND length(" + name + ") <= 38)";
        case Type::Memo:
            return name + " IS NULL OR typeof(" + name + ") = 'text'";
        case Type::Binary:
            return name + " IS NULL OR (typeof(" + name + ") IN ('blob', 'text') AND length(" + name +
                   ") <= " + width + ")";
        default:
            return "";
    }
}

}  // namespace tarmel::access_sql
