#pragma once

/// Places in the lists of the capture screen, where its rules go by place and not by code.
namespace tarmel::captura {

// cboTipoRegistro
inline constexpr int kAnillamiento = 0;
inline constexpr int kRecuperacion = 1;
// cboEdad
inline constexpr int kPollo = 1;
// cboInfoAnilla: where the replaced ring can be typed, and where it is asked for. They differ.
inline constexpr int kAdmiteSustituida = 4;
inline constexpr int kPideSustituida = 5;
// cboMuda
inline constexpr int kMudaSinAnotar = 0;
// cboPlaca, cboGrasa, cboMusculo
inline constexpr int kReservaSinAnotar = 8;

/// Length of the species code at the end of a species' text.
inline constexpr int kCifrasEspecie = 5;

}  // namespace tarmel::captura
