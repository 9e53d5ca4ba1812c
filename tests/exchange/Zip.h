#pragma once

#include <QByteArray>
#include <QtEndian>
#include <vector>

namespace tarmel {

/// A ZIP archive as another program could make it, with any names inside: stored, not compressed.
struct EntradaZip {
    QByteArray nombre;
    QByteArray contenido;
    quint32 modo = 0100644;  ///< Unix kind and permissions of the file
};

inline QByteArray hacerZip(const std::vector<EntradaZip>& entradas) {
    const auto poner = [](QByteArray& destino, auto valor) {
        valor = qToLittleEndian(valor);
        destino.append(reinterpret_cast<const char*>(&valor), sizeof valor);
    };
    const auto suma = [](const QByteArray& bytes) {
        quint32 crc = ~0u;
        for (const char byte : bytes) {
            crc ^= static_cast<quint8>(byte);
            for (int i = 0; i < 8; ++i)
                crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1)));
        }
        return ~crc;
    };
    QByteArray zip;
    QByteArray indice;
    for (const EntradaZip& entrada : entradas) {
        const auto desde = static_cast<quint32>(zip.size());
        QByteArray comun;  // what the local header and the index share
        poner(comun, quint16{20});
        poner(comun, quint16{0});
        poner(comun, quint16{0});
        poner(comun, quint32{0x58210000});
        poner(comun, suma(entrada.contenido));
        poner(comun, static_cast<quint32>(entrada.contenido.size()));
        poner(comun, static_cast<quint32>(entrada.contenido.size()));
        poner(comun, static_cast<quint16>(entrada.nombre.size()));
        poner(comun, quint16{0});
        zip += QByteArray("PK\3\4", 4) + comun + entrada.nombre + entrada.contenido;
        indice += QByteArray("PK\1\2", 4);
        poner(indice, quint16{0x0314});  // made on Unix: the permissions count
        indice += comun;
        poner(indice, quint16{0});
        poner(indice, quint32{0});
        poner(indice, entrada.modo << 16);
        poner(indice, desde);
        indice += entrada.nombre;
    }
    const auto inicioIndice = static_cast<quint32>(zip.size());
    zip += indice + QByteArray("PK\5\6\0\0\0\0", 8);
    poner(zip, static_cast<quint16>(entradas.size()));
    poner(zip, static_cast<quint16>(entradas.size()));
    poner(zip, static_cast<quint32>(indice.size()));
    poner(zip, inicioIndice);
    poner(zip, quint16{0});
    return zip;
}

}  // namespace tarmel
