#pragma once

#include <QByteArray>
#include <QtEndian>
#include <cstring>
#include <vector>

namespace tarmel {

/// The bytes of an Access file, to be damaged with a purpose.
class ArchivoJet {
 public:
    static constexpr qsizetype kPagina = 4096;

    explicit ArchivoJet(QByteArray contenido) : bytes(std::move(contenido)) {}

    QByteArray bytes;

    [[nodiscard]] int paginas() const { return static_cast<int>(bytes.size() / kPagina); }
    template <typename Numero>
    [[nodiscard]] Numero numero(qsizetype lugar) const {
        return qFromLittleEndian<Numero>(bytes.constData() + lugar);
    }
    template <typename Numero>
    void poner(qsizetype lugar, Numero valor) {
        qToLittleEndian<Numero>(valor, bytes.data() + lugar);
    }
    static QByteArray comoBytes(double valor) {
        QByteArray texto(8, '\0');
        std::memcpy(texto.data(), &valor, 8);
        return texto;
    }

    /// Pages of rows that belong to the table defined on that page.
    [[nodiscard]] std::vector<int> paginasDe(quint32 definicion) const {
        std::vector<int> suyas;
        for (int i = 1; i < paginas(); ++i) {
            if (bytes[i * kPagina] == 1 && numero<quint32>(i * kPagina + 4) == definicion) suyas.push_back(i);
        }
        return suyas;
    }
    /// The page that defines the table with so many rows in which the bytes occur; 0 when there is none.
    [[nodiscard]] quint32 definicionCon(const QByteArray& contenido, quint32 filas) const {
        for (qsizetype desde = 0; (desde = bytes.indexOf(contenido, desde)) >= 0; ++desde) {
            const qsizetype pagina = desde / kPagina * kPagina;
            const auto definicion = numero<quint32>(pagina + 4);
            const bool esDeFilas = bytes[pagina] == 1 && definicion < static_cast<quint32>(paginas());
            if (esDeFilas && numero<quint32>(definicion * kPagina + 16) == filas) return definicion;
        }
        return 0;
    }
    static constexpr qsizetype kNumeroDeColumna = 5;
    static constexpr qsizetype kLugarVariable = 7;
    static constexpr qsizetype kMarcasDeColumna = 15;
    static constexpr char kEsFija = 1;
    /// Where a definition describes its n-th column.
    [[nodiscard]] qsizetype lugarDeColumna(quint32 definicion, int columna) const {
        const qsizetype comienzo = definicion * kPagina;
        return comienzo + 63 + 12 * numero<quint32>(comienzo + 51) + 25 * columna;
    }
    static constexpr qsizetype kTipoDeObjeto = 10;
    /// Where the catalogue's row begins that names the definition; -1 when it is not found.
    [[nodiscard]] qsizetype lugarEnCatalogo(quint32 definicion) const {
        constexpr quint32 kDefinicionDelCatalogo = 2;
        for (const int pagina : paginasDe(kDefinicionDelCatalogo)) {
            for (int i = 0; i < ranuras(pagina); ++i) {
                const auto ranura = numero<quint16>(lugarDeRanura(pagina, i));
                const qsizetype fila = pagina * kPagina + (ranura & 0x1FFF);
                if ((ranura & kMovida) == 0 && numero<quint32>(fila + 2) == definicion) return fila;
            }
        }
        return -1;
    }
    void ponerFilas(quint32 definicion, quint32 filas) { poner<quint32>(definicion * kPagina + 16, filas); }
    void vaciarPagina(int pagina) { bytes.replace(pagina * kPagina, kPagina, QByteArray(kPagina, '\0')); }
    /// Replaces the bytes wherever they stand in a page of the table: rows that moved leave their former
    /// bytes behind.
    void cambiar(quint32 definicion, const QByteArray& de, const QByteArray& a) {
        for (const int pagina : paginasDe(definicion))
            bytes.replace(pagina * kPagina, kPagina, bytes.mid(pagina * kPagina, kPagina).replace(de, a));
    }

    [[nodiscard]] int ranuras(int pagina) const { return numero<quint16>(pagina * kPagina + 12); }
    [[nodiscard]] static qsizetype lugarDeRanura(int pagina, int ranura) {
        return pagina * kPagina + 14 + 2 * ranura;
    }
    static constexpr quint16 kBorrada = 0x8000;
    static constexpr quint16 kMovida = 0x4000;

    /// Sends one row that has moved once on a second way; false when the table has none.
    bool moverOtraVez(quint32 definicion) {
        for (const int pagina : paginasDe(definicion)) {
            for (int i = 0; i < ranuras(pagina); ++i) {
                const auto valor = numero<quint16>(lugarDeRanura(pagina, i));
                if ((valor & (kBorrada | kMovida)) != kMovida) continue;
                const qsizetype puntero = pagina * kPagina + (valor & 0x1FFF);
                const auto destino = numero<quint32>(puntero);
                const int nueva = ponerPuntero(static_cast<int>(destino >> 8), destino);
                if (nueva < 0) continue;
                poner<quint32>(puntero, (destino & ~0xFFu) | static_cast<quint32>(nueva));
                return true;
            }
        }
        return false;
    }

 private:
    /// A further slot on a page that holds nothing but where a row is; its number, -1 without room.
    int ponerPuntero(int pagina, quint32 adonde) {
        const int cuantas = ranuras(pagina);
        const int ultima = numero<quint16>(lugarDeRanura(pagina, cuantas - 1)) & 0x1FFF;
        const qsizetype inicio = ultima - 4;
        if (14 + 2 * (cuantas + 1) > inicio) return -1;
        poner<quint32>(pagina * kPagina + inicio, adonde);
        poner<quint16>(lugarDeRanura(pagina, cuantas), static_cast<quint16>(inicio | kBorrada | kMovida));
        poner<quint16>(pagina * kPagina + 12, static_cast<quint16>(cuantas + 1));
        return cuantas;
    }
};

}  // namespace tarmel
