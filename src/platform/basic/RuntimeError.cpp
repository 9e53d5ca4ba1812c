#include "platform/basic/RuntimeError.h"

#include <algorithm>
#include <array>

namespace tarmel::basic {

namespace {

struct NumberedText {
    int number;
    const char16_t* text;
};

constexpr std::array errorTexts{
    NumberedText{error::InvalidCall, u"Argumento o llamada a procedimiento no válida"},
    NumberedText{error::Overflow, u"Desbordamiento"},
    NumberedText{error::Subscript, u"El subíndice está fuera del intervalo"},
    NumberedText{error::TypeMismatch, u"No coinciden los tipos"},
    NumberedText{error::BadFileName, u"Nombre o número de archivo incorrecto"},
    NumberedText{error::FileNotFound, u"No se ha encontrado el archivo"},
    NumberedText{error::FileOpen, u"El archivo ya está abierto"},
    NumberedText{error::FileExists, u"El archivo ya existe"},
    NumberedText{error::DiskFull, u"Disco lleno"},
    NumberedText{error::PastEndOfFile, u"Se ha sobrepasado el final del archivo"},
    NumberedText{error::PermissionDenied, u"Permiso denegado"},
    NumberedText{error::FileAccess, u"Error de acceso a la ruta o al archivo"},
    NumberedText{error::PathNotFound, u"No se ha encontrado la ruta de acceso"},
    NumberedText{error::ObjectNotSet, u"Variable de objeto o bloque With no establecido"},
    NumberedText{error::InvalidNull, u"Uso no válido de Null"},
};

}  // namespace

RuntimeError::RuntimeError(int number) : RuntimeError(number, errorText(number), QStringLiteral("Tarmel")) {}

RuntimeError::RuntimeError(int number, QString description, QString source)
    : number_(number),
      description_(std::move(description)),
      source_(std::move(source)),
      utf8_((QString::number(number_) + QStringLiteral(": ") + description_).toStdString()) {}

QString errorText(int number) {
    const auto found = std::ranges::find(errorTexts, number, &NumberedText::number);
    return found == errorTexts.end() ? QString() : QString::fromUtf16(found->text);
}

}  // namespace tarmel::basic
