#include "platform/access_sql/Errors.h"

namespace tarmel::access_sql {

using basic::RuntimeError;

RuntimeError statementError(const QString& description) {
    return {basic::error::Statement, description, QStringLiteral("Motor de base de datos")};
}

RuntimeError syntaxError(QStringView near, qsizetype position) {
    if (near.isEmpty())
        return statementError(QStringLiteral("Error de sintaxis: la instrucción termina antes de tiempo."));
    constexpr qsizetype kShown = 40;
    return statementError(QStringLiteral("Error de sintaxis en la instrucción, en «%1» (carácter %2).")
                              .arg(near.left(kShown).toString())
                              .arg(position + 1));
}

RuntimeError tooComplex() {
    return statementError(QStringLiteral("La consulta es demasiado compleja."));
}

RuntimeError unknownTable(QStringView name) {
    return statementError(
        QStringLiteral("El motor de base de datos no pudo encontrar la tabla o consulta de entrada '%1'. "
                       "Asegúrese de que existe y de que su nombre está escrito correctamente.")
            .arg(name));
}

RuntimeError unknownField(QStringView name) {
    return statementError(
        QStringLiteral("La instrucción INSERT INTO contiene el siguiente nombre de campo desconocido: '%1'. "
                       "Asegúrese de que escribió correctamente el nombre e intente de nuevo la operación.")
            .arg(name));
}

RuntimeError missingParameters(int count) {
    return statementError(QStringLiteral("Pocos parámetros. Se esperaba %1.").arg(count));
}

RuntimeError notForViews(QStringView what) {
    return statementError(QStringLiteral("'%1' no se puede usar en una vista.").arg(what));
}

}  // namespace tarmel::access_sql
