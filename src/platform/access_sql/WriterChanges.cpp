#include <algorithm>

#include "platform/access_sql/Errors.h"
#include "platform/access_sql/Resolver.h"
#include "platform/access_sql/Writer.h"

/// The writer's part for INSERT, UPDATE and DELETE.
namespace tarmel::access_sql {

namespace {

basic::RuntimeError wrongCount() {
    return statementError(
        QStringLiteral("El número de valores de consulta y el número de campos de destino no coinciden."));
}

basic::RuntimeError notUpdatable() {
    return statementError(QStringLiteral("La operación debe usar una consulta actualizable."));
}

/// Whether the value may go into the column as it is: the file's own checks do the rest.
bool fits(const Expression& value, const ColumnDef& column) {
    const Kind from = kindOf(value.type), to = kindOf(column.type);
    if (const auto* constant = value.as<Constant>(); constant && *constant == Constant::Null) return true;
    if (to == Kind::Text) return from == Kind::Text;
    if (to == Kind::Number) {
        if (from == Kind::Boolean || isWholeType(value.type)) return true;
        return value.type == column.type ? column.type != Type::Decimal
                                         : column.type == Type::Double && from == to;
    }
    return from == to && from != Kind::Unknown;
}

/// What is written through once is simple; after DISTINCT, UNION or TOP the rows must be whole before they
/// are converted.
bool isSimple(const Query& query) {
    const Select& part = query.parts.front();
    return query.parts.size() == 1 && !part.distinct && !part.top;
}

}  // namespace

void Writer::write(const Insert& insert) {
    const TableDef& table = tableNamed(insert.table, schema_);
    if (table.isView) throw notUpdatable();
    out_ += "INSERT INTO " + quoted(table.name);
    if (insert.query) return insertQuery(insert, table);
    const std::size_t count = insert.columns.empty() ? table.columns.size() : insert.columns.size();
    if (insert.values.size() != count) throw wrongCount();
    if (!insert.columns.empty()) {
        for (std::size_t i = 0; i < count; ++i) {
            out_ += i == 0 ? " (" : ", ";
            appendQuoted(out_, insert.columns[i]);
        }
        out_ += ")";
    }
    out_ += " VALUES (";
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) out_ += ", ";
        const std::size_t place =
            insert.columns.empty() ? i : static_cast<std::size_t>(table.indexOf(insert.columns[i]));
        stored(*insert.values[i], table.columns[place]);
    }
    out_ += ")";
    checkSize();
}

/// Without named columns the output's names say where each value goes.
void Writer::insertQuery(const Insert& insert, const TableDef& table) {
    const std::vector<Output>& outputs = insert.query->parts.front().outputs;
    if (!insert.columns.empty() && insert.columns.size() != outputs.size()) throw wrongCount();
    std::vector<const ColumnDef*> columns;
    bool converts = false;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const QStringView name = insert.columns.empty() ? QStringView(outputs[i].name) : insert.columns[i];
        const int place = table.indexOf(name);
        if (place < 0) throw unknownField(name);
        columns.push_back(&table.columns[static_cast<std::size_t>(place)]);
        if (std::count(columns.begin(), columns.end(), columns.back()) > 1) {
            throw statementError(QStringLiteral("Destino de salida '%1' duplicado.").arg(name));
        }
        for (const Select& part : insert.query->parts)
            converts = converts || !fits(*part.outputs[i].value, *columns.back());
        out_ += (i == 0 ? " (" : ", ") + quoted(columns.back()->name);
    }
    out_ += ") ";
    if (!converts) return write(*insert.query);
    const Query& query = *insert.query;
    out_ += "SELECT ";
    if (isSimple(query)) {
        const Select& part = query.parts.front();
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            if (i > 0) out_ += ", ";
            stored(*outputs[i].value, *columns[i]);
        }
        rows(part);
        order(query);
        return checkSize();
    }
    Names names;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        names.push_back(QStringLiteral("~c%1").arg(i));
        if (i > 0) out_ += ", ";
        const Expression& output = *outputs[i].value;
        if (fits(output, *columns[i])) {
            out_ += quoted(names.back());
        } else {
            storedCall(quoted(names.back()), output.type, *columns[i]);
        }
    }
    out_ += " FROM (";
    write(query, names);
    out_ += ")";
}

/// A value on its way into a column: literals are converted when they are bound, everything else by a
/// function.
void Writer::stored(const Expression& expression, const ColumnDef& column) {
    Binding binding;
    binding.convertTo = column.type;
    binding.width = column.width;
    binding.scale = column.scale;
    binding.storing = true;
    binding.column = column.name;
    if (const auto* given = expression.as<Literal>(); given && !given->token.fixed) {
        binding.index = given->token.index;
        return bind(std::move(binding));
    }
    if (const auto* given = expression.as<Parameter>()) {
        binding.source = Binding::Source::Parameter;
        binding.index = given->index;
        return bind(std::move(binding));
    }
    if (fits(expression, column)) return value(expression);
    storedCall(written(expression), expression.type, column);
}

void Writer::storedCall(const QByteArray& text, Type from, const ColumnDef& column) {
    out_ += "tarmel_store(" + text + ", " + QByteArray::number(static_cast<int>(from)) + ", " +
            QByteArray::number(static_cast<int>(column.type)) + ", " + QByteArray::number(column.width) +
            ", " + QByteArray::number(column.scale) + ", " + quotedText(column.name) + ")";
}

void Writer::write(const Update& update) {
    const Source& target = updateTarget(update);
    if (update.rows.sources.size() > 1) return updateJoined(update, target);
    out_ += "UPDATE ";
    table(target);
    for (std::size_t i = 0; i < update.assignments.size(); ++i) {
        const Assignment& assignment = update.assignments[i];
        const ColumnDef& column = assignment.column->as<ColumnName>()->definition();
        out_ += i == 0 ? " SET " : ", ";
        appendQuoted(out_, column.name);
        out_ += " = ";
        stored(*assignment.value, column);
    }
    where(update.rows);
    checkSize();
}

const Source& Writer::updateTarget(const Update& update) const {
    const Source* target = update.assignments.front().column->as<ColumnName>()->source;
    for (const Assignment& assignment : update.assignments) {
        if (assignment.column->as<ColumnName>()->source == target) continue;
        throw statementError(QStringLiteral("Una actualización no puede escribir en dos tablas a la vez."));
    }
    if (!target->isStored()) throw notUpdatable();
    return *target;
}

/// A row of the target may have several partners: it is written once, with one of them.
void Writer::updateJoined(const Update& update, const Source& target) {
    if (hasBrackets(*update.rows.from)) throw notUpdatable();
    const QByteArray row = quoted(target.writtenName()) + ".rowid";
    const QByteArray name = quoted(target.definition->name);
    out_ += "UPDATE " + name;
    for (std::size_t i = 0; i < update.assignments.size(); ++i) {
        const ColumnDef& column = update.assignments[i].column->as<ColumnName>()->definition();
        out_ += (i == 0 ? " SET " : ", ") + quoted(column.name) + " = \"~new\".\"~v" + QByteArray::number(i) +
                "\"";
    }
    out_ += " FROM (SELECT " + row + " AS \"~row\"";
    for (std::size_t i = 0; i < update.assignments.size(); ++i) {
        out_ += ", ";
        stored(*update.assignments[i].value, update.assignments[i].column->as<ColumnName>()->definition());
        out_ += " AS \"~v" + QByteArray::number(i) + "\"";
    }
    out_ += " FROM ";
    tables(update.rows);
    where(update.rows);
    out_ += " GROUP BY " + row + ") AS \"~new\" WHERE " + name + ".rowid = \"~new\".\"~row\"";
    checkSize();
}

void Writer::write(const Delete& deletion) {
    const std::vector<Source>& sources = deletion.rows.sources;
    const auto isTarget = [&deletion](const Source& source) {
        return deletion.target.isEmpty() ||
               deletion.target.compare(source.exposedName(), Qt::CaseInsensitive) == 0;
    };
    const auto target = std::find_if(sources.begin(), sources.end(), isTarget);
    if (target == sources.end()) throw unknownTable(deletion.target);
    if (!target->isStored()) throw notUpdatable();
    out_ += "DELETE FROM ";
    if (sources.size() == 1) {
        table(*target);
        where(deletion.rows);
        return checkSize();
    }
    if (deletion.target.isEmpty()) {
        throw statementError(
            QStringLiteral("Especifique la tabla que contiene los registros que desea eliminar."));
    }
    if (hasBrackets(*deletion.rows.from)) throw notUpdatable();
    out_ += quoted(target->definition->name) + " WHERE rowid IN (SELECT " + quoted(target->writtenName()) +
            ".rowid FROM ";
    tables(deletion.rows);
    where(deletion.rows);
    out_ += ")";
    checkSize();
}

}  // namespace tarmel::access_sql
