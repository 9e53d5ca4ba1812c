#pragma once

#include <sqlite3.h>

#include <QString>
#include <QStringList>

namespace tarmel {

/// A database file seen as any other program sees it: nothing of ours between its rows and the test.
class BaseSuelta {
 public:
    explicit BaseSuelta(const QString& ruta) {
        sqlite3_open_v2(ruta.toUtf8().constData(), &base_, SQLITE_OPEN_READWRITE, nullptr);
    }
    ~BaseSuelta() { sqlite3_close(base_); }
    BaseSuelta(const BaseSuelta&) = delete;
    BaseSuelta& operator=(const BaseSuelta&) = delete;

    /// The rows of a query, fields joined by ";", Null as "-"; a refusal is a row that tells it.
    [[nodiscard]] QStringList filas(const QString& consulta) const {
        QStringList todas;
        cadaFila(consulta, [&](sqlite3_stmt* fila) {
            QStringList campos;
            for (int i = 0; i < sqlite3_column_count(fila); ++i) {
                const auto* texto = reinterpret_cast<const char*>(sqlite3_column_text(fila, i));
                campos << (texto ? QString::fromUtf8(texto) : QStringLiteral("-"));
            }
            todas << campos.join(u';');
        });
        if (sqlite3_errcode(base_) != SQLITE_OK && sqlite3_errcode(base_) != SQLITE_DONE)
            todas << QString::fromUtf8(sqlite3_errmsg(base_));
        return todas;
    }
    [[nodiscard]] QString valor(const QString& consulta) const { return filas(consulta).join(u'|'); }

    template <typename Accion>
    void cadaFila(const QString& consulta, Accion&& accion) const {
        sqlite3_stmt* fila = nullptr;
        sqlite3_prepare_v2(base_, consulta.toUtf8().constData(), -1, &fila, nullptr);
        while (fila && sqlite3_step(fila) == SQLITE_ROW)
            accion(fila);
        sqlite3_finalize(fila);
    }

 private:
    sqlite3* base_ = nullptr;
};

}  // namespace tarmel
