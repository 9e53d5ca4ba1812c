// tarmel_sql FILE: opens a database as the program does, reads statements of the dialect from standard input,
// one a line, and prints one JSON line for each: {"rows":[[...]],"columns":[...]}, {"affected":n} or
// {"error":{"number":n,"text":"..."}}. ":memory:" starts on an empty database.

#include <QFile>
#include <QString>
#include <charconv>
#include <cmath>
#include <iostream>
#include <string>

#include "database/Esquema.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"

namespace {

using tarmel::ado::Connection;
using tarmel::ado::Cursor;
using tarmel::ado::Recordset;
using tarmel::basic::RuntimeError;
using tarmel::basic::Variant;

std::string jsonText(const QString& text) {
    static constexpr char hex[] = "0123456789abcdef";
    std::string json = "\"";
    for (const char c : text.toUtf8()) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
            case '"':
                json += "\\\"";
                break;
            case '\\':
                json += "\\\\";
                break;
            case '\n':
                json += "\\n";
                break;
            case '\r':
                json += "\\r";
                break;
            case '\t':
                json += "\\t";
                break;
            default:
                if (byte < 0x20) {
                    json += std::string("\\u00") + hex[byte >> 4] + hex[byte & 15];
                } else {
                    json += c;
                }
        }
    }
    return json + '"';
}

/// The shortest form that reads back as the same number.
std::string jsonNumber(double number) {
    if (!std::isfinite(number)) return "null";
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number);
    return {digits, end.ptr};
}

std::string jsonValue(const Variant& value) {
    if (value.isNull() || value.isEmpty()) return "null";
    if (value.isBool()) return value.toBool() ? "true" : "false";
    if (const auto* whole = std::get_if<qint64>(&value.raw())) return std::to_string(*whole);
    if (value.isDouble()) return jsonNumber(value.toDouble());
    if (value.isDate()) return jsonText(value.toDate().iso());
    return jsonText(value.toText());
}

std::string endOfRows(const Recordset& rows) {
    std::string columns;
    for (int i = 0; i < rows.FieldCount(); ++i)
        columns += (i ? "," : "") + jsonText(rows.FieldAt(i).name);
    return "],\"columns\":[" + columns + "]}";
}

std::string result(Connection& connection, const QString& statement) {
    Recordset rows;
    rows.Open(statement, connection, Cursor::ForwardOnly);
    if (!rows.IsOpen()) return "{\"affected\":" + std::to_string(rows.RecordsAffected()) + "}";
    std::string json = "{\"rows\":[";
    for (bool first = true; !rows.Eof(); rows.MoveNext(), first = false) {
        json += first ? "[" : ",[";
        for (int i = 0; i < rows.FieldCount(); ++i)
            json += (i ? "," : "") + jsonValue(rows.Value(i));
        json += "]";
    }
    return json + endOfRows(rows);
}

std::string errorLine(const RuntimeError& error) {
    return "{\"error\":{\"number\":" + std::to_string(error.number()) +
           ",\"text\":" + jsonText(error.description()) + "}}";
}

void carryOut(Connection& connection, const QString& statement) {
    try {
        std::cout << result(connection, statement) << std::endl;
    } catch (const RuntimeError& error) {
        std::cout << errorLine(error) << std::endl;
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "uso: tarmel_sql ARCHIVO < instrucciones\n";
        return 2;
    }
    Connection connection;
    try {
        connection.OpenFile(QFile::decodeName(argv[1]));
        tarmel::sanarIdentificadores(connection);
    } catch (const RuntimeError& error) {
        std::cout << errorLine(error) << std::endl;
        return 1;
    }
    for (std::string line; std::getline(std::cin, line);) {
        const QString statement = QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size()));
        if (!statement.trimmed().isEmpty()) carryOut(connection, statement);
    }
    connection.Close();
    return 0;
}
