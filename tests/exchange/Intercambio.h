#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <optional>

#include "core/Programa.h"
#include "exchange/A_EXP_EnvioDatos.h"
#include "exchange/A_IMP_ReciboDatos.h"
#include "exchange/frm04_ActualizarLocalidades.h"
#include "exchange/frm05_ActualizarEspecies.h"
#include "exchange/frm09_ImportarDatos.h"
#include "exchange/frm10_ExportarDatos.h"
#include "platform/basic/ErrorOf.h"
#include "platform/basic/Text.h"

namespace tarmel {

/// A program with its folder Datos and the real archiver, and a few ways to put data into it.
class Intercambio : public Programa {
 protected:
    class HostConDialogo : public HostDePrueba {
     public:
        std::optional<QString> fichero;  ///< the answer of the next file dialogue
        std::optional<QString> OpenFileDialogue(const forms::FileDialogue&) override { return fichero; }
    };

    Intercambio() {
        mundo.carpeta = host.carpeta;
        QDir(ruta(QString())).mkdir(QStringLiteral("Datos"));
        QFile::link(QStandardPaths::findExecutable(QStringLiteral("7za")), ruta(QStringLiteral("7za")));
    }
    void SetUp() override { arrancarComo(kAnillador); }
    /// Whatever a file held, the database is whole.
    void TearDown() override {
        forms::pantallas().Reset();
        reiniciarSesion();
        EXPECT_EQ(ado::test::Plain(base()).value("PRAGMA integrity_check"), QStringLiteral("ok"));
    }

    static inline const QString kAnillador = QStringLiteral("123456");

    /// Another ringer, or the same one in another role.
    static void cambiarPapel(bool coordinador) {
        gCoordinador = coordinador ? 1 : 0;
        gEsCoordinador = coordinador;
    }
    static void anillador(int id, const QString& codigo, const QString& nombre, const QString& grupo) {
        sql(QStringLiteral("INSERT INTO ANIMAT (IdAnillador, CodigoAnillador, NombreAnillador, "
                           "CoordinadorGrupo, CodigoGrupo) VALUES (%1, %2, '%3', 0, '%4')")
                .arg(QString::number(id), codigo, nombre, grupo));
    }
    static void hoja(int id, const QString& numHoja, const QString& propietario, const QString& fecha,
                     const QString& campaña = {}, const QString& localidad = QStringLiteral("01002")) {
        sql(QStringLiteral("INSERT INTO ANICHO (IdCabecera, NumHoja, CodAnillador, CodLocalidad, "
                           "FechaCaptura, Campanna, HoraDesde, LongitudRed, Anillador, Grupo) VALUES "
                           "(%1, %2, %3, '%4', '%5', '%6', '7:30:00', '36,5', %7, 900001)")
                .arg(QString::number(id), numHoja, propietario, localidad, fecha, campaña, kAnillador));
    }
    static void captura(int idHoja, int numero, const QString& anilla, const QString& otros = {},
                        const QString& valores = {}) {
        sql(QStringLiteral("INSERT INTO ANIAHO (IdCabecera, NumRegistro, TipoRegistro, NumeroAnilla, Anilla, "
                           "IdEspecie, CodigoEspecie, CodigoSexo%4) VALUES (%1, %2, 'A', '%3', '%3', 2, "
                           "'00010', 'M'%5)")
                .arg(QString::number(idHoja), QString::number(numero), anilla, otros, valores));
    }

    /// A file of Datos.
    static QString enDatos(const QString& nombre) { return QStringLiteral("Datos/") + nombre; }
    [[nodiscard]] QStringList ficherosDeDatos() const {
        return QDir(ruta(QStringLiteral("Datos"))).entryList(QDir::Files | QDir::System);
    }
    /// Packs files of Datos as a received archive and removes them.
    void empaquetar(const QString& archivo, const QStringList& ficheros) const {
        QProcess proceso;
        proceso.setWorkingDirectory(ruta(QStringLiteral("Datos")));
        proceso.start(QStringLiteral("7za"), QStringList{QStringLiteral("a"), archivo} + ficheros);
        ASSERT_TRUE(proceso.waitForFinished());
        ASSERT_EQ(proceso.exitCode(), 0);
        for (const QString& fichero : ficheros)
            QFile::remove(ruta(enDatos(fichero)));
    }

    HostConDialogo mundo;
};

}  // namespace tarmel
