#include "platform/access_sql/Translator.h"

#include "platform/access_sql/Parser.h"
#include "platform/access_sql/Resolver.h"
#include "platform/access_sql/Writer.h"

namespace tarmel::access_sql {

namespace {

std::vector<OutputColumn> columnsOf(const Query& query) {
    std::vector<OutputColumn> columns;
    for (const Output& output : query.parts.front().outputs) {
        columns.push_back({output.name, output.table, output.value->type});
    }
    return columns;
}

template <typename Change>
Translation changed(Change& change, const Schema& schema) {
    Resolver resolver(schema);
    resolver.resolve(change);
    resolver.finish();
    Writer writer(Writer::Target::Engine, schema);
    writer.write(change);
    Translation translation;
    translation.kind = Translation::Kind::Change;
    translation.text = writer.takeText();
    translation.bindings = writer.takeBindings();
    return translation;
}

Translation translated(Query& query, const Schema& schema) {
    Translation translation = changed(query, schema);
    translation.kind = Translation::Kind::Select;
    translation.columns = columnsOf(query);
    return translation;
}

Translation translated(Insert& insert, const Schema& schema) {
    return changed(insert, schema);
}
Translation translated(Update& update, const Schema& schema) {
    return changed(update, schema);
}
Translation translated(Delete& deletion, const Schema& schema) {
    return changed(deletion, schema);
}

Translation translated(Definition& definition, const Schema&) {
    Translation translation;
    translation.kind = Translation::Kind::Define;
    translation.definition = std::move(definition);
    return translation;
}

/// Two columns of a view never share a name: see distinctNames().
Translation translated(NewView& view, const Schema& schema) {
    Resolver resolver(schema);
    resolver.resolve(view.query);
    resolver.finish();
    std::vector<Output>& outputs = view.query.parts.front().outputs;
    if (!view.columns.empty() && view.columns.size() != outputs.size()) {
        throw statementError(
            QStringLiteral("El número de nombres de la vista no coincide con el de sus campos."));
    }
    for (std::size_t i = 0; i < view.columns.size(); ++i)
        outputs[i].name = view.columns[i].toString();
    const std::vector<QString> names = distinctNames(outputs);
    Writer writer(Writer::Target::File, schema);
    writer.write(view.query, names);
    CreateView definition;
    definition.name = view.name.toString();
    definition.dialectText = view.text;
    definition.sqliteText = writer.takeText();
    definition.columns = columnsOf(view.query);
    for (std::size_t i = 0; i < names.size(); ++i)
        definition.columns[i].name = names[i];
    Translation translation;
    translation.kind = Translation::Kind::Define;
    translation.definition = std::move(definition);
    return translation;
}

}  // namespace

Translation translate(const QString& sql, const Schema& schema) {
    Statement statement = Parser(sql).parse();
    return std::visit([&schema](auto& what) { return translated(what, schema); }, statement);
}

}  // namespace tarmel::access_sql
