#include "platform/access_sql/TestEngine.h"

#include <gtest/gtest.h>

#include <QFile>

#include "platform/access_sql/Functions.h"

namespace tarmel::access_sql {

using basic::Variant;

namespace {

void bindValue(sqlite3_stmt* statement, int place, const Variant& value) {
    if (value.isNull() || value.isEmpty()) {
        sqlite3_bind_null(statement, place);
    } else if (value.isBool()) {
        sqlite3_bind_int(statement, place, value.toBool() ? -1 : 0);
    } else if (value.isWhole()) {
        sqlite3_bind_int64(statement, place, std::get<qint64>(value.raw()));
    } else if (value.isDouble()) {
        sqlite3_bind_double(statement, place, value.toDouble());
    } else {
        const QByteArray text = (value.isDate() ? value.toDate().iso() : value.toText()).toUtf8();
        sqlite3_bind_text(statement, place, text.constData(), static_cast<int>(text.size()),
                          SQLITE_TRANSIENT);
    }
}

Variant boundValue(const Binding& binding, const Shape& shape, const std::vector<Variant>& parameters) {
    const bool literal = binding.source == Binding::Source::Literal;
    const auto& values = literal ? shape.literals : parameters;
    const Variant& value = values.at(static_cast<std::size_t>(binding.index));
    if (binding.convertTo == Type::Unknown) return value;
    if (!binding.storing) return convertForComparing(value, binding.convertTo);
    return convertForStoring(value, binding.convertTo, binding.width, binding.scale, binding.column);
}

QString shown(sqlite3_stmt* statement, int column) {
    if (sqlite3_column_type(statement, column) == SQLITE_NULL) return QStringLiteral("Null");
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
}

}  // namespace

TestEngine::TestEngine() {
    sqlite3* db = nullptr;
    sqlite3_open(":memory:", &db);
    db_.reset(db);
    registerFunctions(db);
}

const TableDef* TestEngine::table(QStringView name) const {
    const auto found = tables_.find(name.toString().toLower());
    return found == tables_.end() ? nullptr : &found->second;
}

basic::RuntimeError TestEngine::failure() const {
    return statementError(QString::fromUtf8(sqlite3_errmsg(db_.get())));
}

void TestEngine::plain(const char* sql) {
    if (sqlite3_exec(db_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) throw failure();
}

TestEngine::Prepared TestEngine::prepared(const QString& sql, const std::vector<Variant>& parameters,
                                          const char* before) {
    const Shape shape = lift(sql);
    const Translation translation = translate(sql, *this);
    if (translation.kind == Translation::Kind::Define) {
        define(translation.definition);
        return nullptr;
    }
    columns_ = translation.columns;
    sqlite3_stmt* raw = nullptr;
    const QByteArray text = before + translation.text;
    const int result = sqlite3_prepare_v2(db_.get(), text.constData(), -1, &raw, nullptr);
    Prepared statement(raw);
    EXPECT_EQ(result, SQLITE_OK) << sqlite3_errmsg(db_.get()) << "\n"
                                 << sql.toStdString() << "\n"
                                 << text.toStdString();
    if (result != SQLITE_OK) throw failure();
    EXPECT_EQ(static_cast<std::size_t>(sqlite3_bind_parameter_count(raw)), translation.bindings.size());
    for (std::size_t i = 0; i < translation.bindings.size(); ++i) {
        bindValue(raw, static_cast<int>(i) + 1, boundValue(translation.bindings[i], shape, parameters));
    }
    return statement;
}

std::vector<QStringList> TestEngine::run(const QString& sql, const std::vector<Variant>& parameters) {
    const Prepared statement = prepared(sql, parameters);
    std::vector<QStringList> rows;
    if (!statement) return rows;
    int result = SQLITE_OK;
    while ((result = sqlite3_step(statement.get())) == SQLITE_ROW) {
        QStringList row;
        for (int c = 0; c < sqlite3_column_count(statement.get()); ++c)
            row << shown(statement.get(), c);
        rows.push_back(row);
    }
    if (result != SQLITE_DONE) throw failure();
    return rows;
}

std::string TestEngine::rows(const QString& sql, const std::vector<Variant>& parameters) {
    QStringList lines;
    for (const QStringList& row : run(sql, parameters))
        lines << row.join(u'|');
    return lines.join(u';').toStdString();
}

std::string TestEngine::value(const QString& sql) {
    const auto all = run(sql);
    return all.empty() ? "no row" : all.front().front().toStdString();
}

std::string TestEngine::refusal(const QString& sql) {
    try {
        run(sql);
        return {};
    } catch (const basic::RuntimeError& error) {
        EXPECT_EQ(error.number(), basic::error::Statement);
        EXPECT_EQ(error.source(), QStringLiteral("Motor de base de datos"));
        return error.description().toStdString();
    }
}

std::string TestEngine::plan(const QString& sql) {
    const Prepared statement = prepared(sql, {}, "EXPLAIN QUERY PLAN ");
    QStringList lines;
    while (sqlite3_step(statement.get()) == SQLITE_ROW)
        lines << shown(statement.get(), 3);
    return lines.join(u';').toStdString();
}

void TestEngine::runFile(const QString& path) {
    for (const QString& statement : statementsOf(path))
        run(statement);
}

void TestEngine::define(const TableDef& table) {
    QByteArrayList lines;
    for (const ColumnDef& column : table.columns) {
        const bool counter = column.type == Type::Counter;
        lines << quoted(column.name) + " " + declaredType(column) +
                     (counter ? " PRIMARY KEY AUTOINCREMENT" : "") + " CHECK (" + columnCheck(column) + ")";
    }
    if (!table.primaryKey.empty()) {
        QByteArrayList names;
        for (const QString& name : table.primaryKey)
            names << quoted(name);
        lines << "UNIQUE (" + names.join(", ") + ")";
    }
    plain(("CREATE TABLE " + quoted(table.name) + " (" + lines.join(", ") + ")").constData());
    tables_[table.name.toLower()] = table;
}

void TestEngine::define(const Definition& definition) {
    if (const auto* made = std::get_if<CreateTable>(&definition)) return define(made->table);
    if (const auto* dropped = std::get_if<DropTable>(&definition)) {
        plain("DROP TABLE " + quoted(dropped->name));
        tables_.erase(dropped->name.toLower());
    }
    if (const auto* added = std::get_if<AddColumn>(&definition)) {
        plain("ALTER TABLE " + quoted(added->table) + " ADD COLUMN " + quoted(added->column.name) + " " +
              declaredType(added->column));
        tables_[added->table.toLower()].columns.push_back(added->column);
    }
    const auto* view = std::get_if<CreateView>(&definition);
    if (!view) return;
    plain("CREATE VIEW " + quoted(view->name) + " AS " + view->sqliteText);
    TableDef table;
    table.name = view->name;
    table.isView = true;
    for (const OutputColumn& column : view->columns) {
        ColumnDef definitionOfColumn;
        definitionOfColumn.name = column.name;
        definitionOfColumn.type = column.type;
        table.columns.push_back(definitionOfColumn);
    }
    tables_[table.name.toLower()] = table;
}

QStringList statementsOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    QStringList statements;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        if (!line.trimmed().isEmpty() && !line.startsWith(u"--")) statements << line;
    }
    return statements;
}

}  // namespace tarmel::access_sql
