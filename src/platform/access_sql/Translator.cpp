#include "platform/access_sql/Translator.h"

#include "platform/access_sql/Parser.h"
#include "platform/access_sql/Resolver.h"
#include "platform/access_sql/Writer.h"

namespace tarmel::access_sql {

namespace {

/// The columns are those of the first SELECT; where it says Null, another one tells the type.
std::vector<OutputColumn> columnsOf(const Query& query) {
    const std::vector<Output>& outputs = query.parts.front().outputs;
    std::vector<OutputColumn> columns;
    columns.reserve(outputs.size());
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        Type type = Type::Unknown;
        for (const Select& part : query.parts) {
            if (type == Type::Unknown) type = part.outputs[i].value->type;
        }
        columns.push_back({outputs[i].name, outputs[i].table, type});
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
