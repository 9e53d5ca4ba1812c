#pragma once

#include <random>

namespace tarmel::muestra {

/// Chance that a seed repeats, on every machine: the standard's distributions differ from one library to
/// another.
class Azar {
 public:
    explicit Azar(quint64 semilla) : motor_(semilla) {}

    /// From 0 to one below `limite`.
    int menorQue(int limite) { return static_cast<int>(motor_() % static_cast<quint64>(limite)); }
    int entre(int primero, int ultimo) { return primero + menorQue(ultimo - primero + 1); }
    bool deCadaCien(int veces) { return menorQue(100) < veces; }
    template <typename Lista>
    const auto& uno(const Lista& lista) {
        return lista[static_cast<std::size_t>(menorQue(static_cast<int>(std::size(lista))))];
    }
    /// Around a mean as measures are, never further away than three and a half times the deviation.
    double alrededor(double media, double desviacion) {
        constexpr int sumandos = 4;  // uniform ones; their sum has a deviation of the root of 4/12
        double suma = 0;
        for (int n = 0; n < sumandos; ++n)
            suma += menorQue(1 << 20) / static_cast<double>(1 << 20) - 0.5;
        return media + suma * 1.7320508 * desviacion;
    }

 private:
    std::mt19937_64 motor_;
};

}  // namespace tarmel::muestra
