#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <functional>
#include <vector>

/// Processes that are killed in the middle of their work, at moments that are known: not after so many
/// milliseconds, but right before one of the calls by which they change files.
namespace tarmel {

/// Tells the observer a line; what was told before the death arrives.
using Avisar = std::function<void(const QByteArray& linea)>;

struct Corrida {
    int escrituras = 0;   ///< calls that changed files, from the first line told to the end
    bool muerto = false;  ///< killed at the moment that was asked for
    int codigo = 0;       ///< exit code when it ended by itself: 0 well, 4 by an exception
    QByteArrayList avisos;
};

/// Carries out the action in a process of its own and kills it (SIGKILL) when it is about to change a file
/// for the n-th time since its first line; 0 lets it end. Writing, cutting, syncing, renaming, removing and
/// creating files count, whoever does it; processes that it starts are not looked at.
[[nodiscard]] Corrida correr(const std::function<void(const Avisar&)>& accion, int matarEn = 0);

/// Deaths of a test: as many as the environment's TARMEL_MUERTES says, otherwise so many.
[[nodiscard]] int muertes(int porDefecto = 60);

/// So many moments spread evenly over so many changes, from the first to the last; fewer where there are no
/// more changes. The last ones may be all among them: where names change, each counts.
[[nodiscard]] std::vector<int> momentos(int escrituras, int cuantos, int todosLosUltimos = 0);

/// Lets `ronda` die at the moments of a stage that changes files so often, and prints how many there were.
void repartirMuertes(const char* etapa, int escrituras, const std::function<void(int momento)>& ronda,
                     int todosLosUltimos = 0);

}  // namespace tarmel
