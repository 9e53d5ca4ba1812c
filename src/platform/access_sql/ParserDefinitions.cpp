#include <limits>

#include "platform/access_sql/Errors.h"
#include "platform/access_sql/Parser.h"
#include "platform/access_sql/Types.h"

/// The parser's rules for definitions: tables, constraints and views.
namespace tarmel::access_sql {

Statement Parser::creation() {
    if (takeIfWord(u"VIEW")) return view();
    expectWord(u"TABLE");
    return Definition(table());
}

NewView Parser::view() {
    NewView result;
    result.name = name();
    if (takeIf(TokenKind::LeftParenthesis)) {
        do {
            result.columns.push_back(name());
        } while (takeIf(TokenKind::Comma));
        expect(TokenKind::RightParenthesis);
    }
    expectWord(u"AS");
    const qsizetype from = current().position;
    result.query = query();
    result.text = sql_.sliced(from, current().position - from).trimmed();
    return result;
}

CreateTable Parser::table() {
    CreateTable result;
    result.table.name = name().toString();
    expect(TokenKind::LeftParenthesis);
    do {
        QStringView constraint;
        if (takeIfWord(u"CONSTRAINT")) constraint = name();
        if (takeIfWord(u"PRIMARY")) {
            expectWord(u"KEY");
            if (!result.table.primaryKey.empty()) refuse();
            result.primaryKeyName = constraint.toString();
            result.table.primaryKey = keyColumns();
            continue;
        }
        if (!constraint.isEmpty()) refuse();
        ColumnDef definition = column();
        if (result.table.indexOf(definition.name) >= 0) {
            throw statementError(QStringLiteral("El campo '%1' ya existe en la tabla '%2'.")
                                     .arg(definition.name, result.table.name));
        }
        columnClauses(result, definition);
        result.table.columns.push_back(std::move(definition));
    } while (takeIf(TokenKind::Comma));
    expect(TokenKind::RightParenthesis);
    if (result.table.columns.empty()) refuse();
    for (const QString& key : result.table.primaryKey) {
        if (result.table.indexOf(key) < 0) throw missingParameters(1);
    }
    return result;
}

/// What may follow a column inside CREATE TABLE.
void Parser::columnClauses(CreateTable& definition, ColumnDef& column) {
    QStringView constraint;
    if (takeIfWord(u"CONSTRAINT")) {
        constraint = name();
        if (!atWord(u"PRIMARY")) refuse();
    }
    if (!takeIfWord(u"PRIMARY")) return;
    expectWord(u"KEY");
    if (!definition.table.primaryKey.empty()) refuse();
    definition.primaryKeyName = constraint.toString();
    definition.table.primaryKey = {column.name};
}

ColumnDef Parser::column() {
    ColumnDef result;
    result.name = name().toString();
    const Token& type = current();
    const TypeName* facts = at(TokenKind::Name) ? typeNamed(type.text) : nullptr;
    if (!facts) refuse();
    take();
    result.type = facts->type;
    result.width = facts->width;
    result.scale = 0;
    if (facts->sized && takeIf(TokenKind::LeftParenthesis)) {
        result.width = wholeNumber();
        if (result.type == Type::Decimal && takeIf(TokenKind::Comma)) result.scale = wholeNumber();
        expect(TokenKind::RightParenthesis);
        checkSize(result);
    }
    while (true) {
        if (takeIfWord(u"DEFAULT")) {
            result.defaultValue = defaultValue();
        } else if (atWord(u"NOT")) {
            take();
            expectWord(u"NULL");
            result.notNull = true;
        } else if (!takeIfWord(u"NULL")) {
            return result;
        }
    }
}

QString Parser::defaultValue() {
    const qsizetype from = current().position;
    takeIf(TokenKind::Minus);
    const bool word = atWord(u"TRUE") || atWord(u"FALSE") || atWord(u"NULL");
    if (!current().isLiteral() && !word) refuse();
    const Token& value = take();
    const qsizetype signs = value.kind == TokenKind::Text || value.kind == TokenKind::Date ? 2 : 0;
    return sql_.sliced(from, value.position + value.text.size() + signs - from);
}

std::vector<QString> Parser::keyColumns() {
    std::vector<QString> columns;
    expect(TokenKind::LeftParenthesis);
    do {
        columns.push_back(name().toString());
    } while (takeIf(TokenKind::Comma));
    expect(TokenKind::RightParenthesis);
    return columns;
}

int Parser::wholeNumber() {
    if (!at(TokenKind::Whole)) refuse();
    const qlonglong value = take().text.toLongLong();
    if (value > std::numeric_limits<int>::max()) throw tooComplex();
    return static_cast<int>(value);
}

Definition Parser::alteration() {
    expectWord(u"TABLE");
    const QStringView table = name();
    if (takeIfWord(u"ALTER")) {
        takeIfWord(u"COLUMN");
        return AlterColumn{table.toString(), column()};
    }
    if (takeIfWord(u"DROP")) {
        expectWord(u"CONSTRAINT");
        return DropConstraint{table.toString(), name().toString()};
    }
    expectWord(u"ADD");
    if (takeIfWord(u"CONSTRAINT")) {
        const QStringView constraint = name();
        return foreignKey(table, constraint);
    }
    takeIfWord(u"COLUMN");
    return AddColumn{table.toString(), column()};
}

AddForeignKey Parser::foreignKey(QStringView table, QStringView constraint) {
    ForeignKey key;
    key.name = constraint.toString();
    key.table = table.toString();
    expectWord(u"FOREIGN");
    expectWord(u"KEY");
    expect(TokenKind::LeftParenthesis);
    key.column = name().toString();
    expect(TokenKind::RightParenthesis);
    expectWord(u"REFERENCES");
    key.targetTable = name().toString();
    if (takeIf(TokenKind::LeftParenthesis)) {
        key.targetColumn = name().toString();
        expect(TokenKind::RightParenthesis);
    }
    return AddForeignKey{key};
}

Definition Parser::drop() {
    if (takeIfWord(u"VIEW")) return DropView{name().toString()};
    expectWord(u"TABLE");
    return DropTable{name().toString()};
}

}  // namespace tarmel::access_sql
