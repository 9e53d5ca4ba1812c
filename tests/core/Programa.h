#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "core/RegistroPantallas.h"
#include "core/frm02_Matricula.h"
#include "database/Esquema.h"
#include "platform/ado/Support.h"
#include "platform/basic/Printers.h"
#include "platform/basic/Text.h"
#include "platform/forms/Pantallas.h"
#include "sheets/HostDePrueba.h"

namespace tarmel {

/// Where a program under test stands: its host, and a fresh application folder with the prepared database.
class Programa : public testing::Test {
 protected:
    class Host : public HostDePrueba {
     public:
        bool otraCopia = false;
        QStringList ayudas;
        int ajustesDeFecha = 0;
        std::vector<forms::Pointer> punteros;

        [[nodiscard]] bool PreviousInstance() const override { return otraCopia; }
        void ShowHelp(const QString& fichero) override { ayudas << fichero; }
        void ShowDateTimeSettings() override { ++ajustesDeFecha; }
        void SetPointer(forms::Pointer puntero) override { punteros.push_back(puntero); }
    };

    Programa() {
        host.carpeta = carpeta_.path();
        QFile::copy(basePreparada(), base());
    }
    ~Programa() override {
        forms::pantallas().Reset();
        reiniciarSesion();
    }

    [[nodiscard]] QString ruta(const QString& nombre) const { return carpeta_.filePath(nombre); }
    [[nodiscard]] QString base() const { return ruta(QStringLiteral("Tarmel_11.mdb")); }
    void escribir(const QString& nombre, const QByteArray& contenido) const {
        QFile fichero(ruta(nombre));
        ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
        ASSERT_EQ(fichero.write(contenido), contenido.size());
    }
    [[nodiscard]] QByteArray leer(const QString& nombre) const {
        QFile fichero(ruta(nombre));
        return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
    }
    [[nodiscard]] QStringList ficheros() const { return QDir(carpeta_.path()).entryList(QDir::Files); }

    /// Runs an action of the program; true when it ended the program.
    template <typename Accion>
    static bool termina(Accion&& accion) {
        try {
            accion();
        } catch (const forms::ProgramEnd&) {
            return true;
        }
        return false;
    }

    /// Starts the program up to the identification.
    void arrancar() {
        ASSERT_FALSE(termina([] { Main(); })) << host.textosDeCajas().toStdString();
    }

    /// Starts it and identifies a ringer that it does not know yet.
    void arrancarComo(const QString& codigo, bool coordinador = false) {
        arrancar();
        identificar(codigo, coordinador);
    }
    static void identificar(const QString& codigo, bool coordinador = false) {
        auto& pantalla = forms::pantallas().Get<frm02_Matricula>();
        pantalla.txtCodAnillador.SetText(codigo);
        pantalla.CargarDatosAnillador();
        pantalla.txtAnillador.SetText(QStringLiteral("ANILLADOR ") + codigo);
        pantalla.txtCodGrupo.SetText(QStringLiteral("900001"));
        pantalla.txtGrupo.SetText(QStringLiteral("GRUPO"));
        pantalla.txtCodEntidad.SetText(QStringLiteral("000007"));
        pantalla.txtEntidad.SetText(QStringLiteral("ENTIDAD"));
        pantalla.chkCoordinador.SetValue(coordinador ? 1 : 0);
        pantalla.UserClick(pantalla.cmdAceptar);
    }

    static void sql(const QString& orden) { gConexion.Execute(orden); }
    /// The rows of a statement: fields joined by ";", rows by "|", Null empty.
    static QString filas(const QString& consulta) { return ado::test::rowsOf(gConexion, consulta); }

    static void escribirEn(forms::Form& pantalla, forms::TextBox& caja, const QString& texto) {
        pantalla.UserGoTo(caja);
        for (const QChar c : texto)
            pantalla.UserChar(c);
    }

    Host host;

    /// Made once for all tests of the process.
    static QString basePreparada() {
        static const QTemporaryDir carpeta;
        static const QString base = [] {
            const QString ruta = carpeta.filePath(QStringLiteral("base.mdb"));
            prepararBase(ruta, QStringLiteral(TARMEL_DATA_DIR "/tables"));
            return ruta;
        }();
        return base;
    }

 private:
    QTemporaryDir carpeta_;
};

}  // namespace tarmel
