#pragma once

namespace tarmel {

/// A disk that fails when it is told to. While one lives, every database that this process opens goes through
/// it; all it does reaches the real file until the moment that was asked for. Made before the databases are
/// opened, and gone behind them. One at a time.
class DiscoAveriado {
 public:
    enum class Averia {
        Lleno,  ///< no room: a file cannot be written to or made longer, but can be removed
        Error,  ///< the device refuses: nothing can be written, synced, cut or removed
    };

    DiscoAveriado();
    ~DiscoAveriado();
    DiscoAveriado(const DiscoAveriado&) = delete;
    DiscoAveriado& operator=(const DiscoAveriado&) = delete;

    /// The n-th operation from now on (the first is 1) that such a trouble can hit fails, and every one
    /// behind it, until the disk is mended; or that one alone.
    void averiar(Averia averia, int n, bool soloUna = false);
    void reparar();

    /// Operations that such a trouble can hit, since the last call of the two above: how many moments there
    /// are to try.
    [[nodiscard]] int operaciones(Averia averia) const;
    /// Has an operation failed since?
    [[nodiscard]] bool haFallado() const;
};

}  // namespace tarmel
