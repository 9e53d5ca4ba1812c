#include "Header.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <numeric>
#include <utility>

#include "Stream.h"

namespace access_reader {

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kVersionPlace = 0x14;
constexpr std::size_t kMaskedFrom = 0x18;  // these bytes of the first page are masked, always the same way
constexpr std::size_t kMaskedBytes = 128;
constexpr std::array<unsigned char, 4> kMaskKey{0xC7, 0xDA, 0x39, 0x6B};
constexpr std::size_t kPasswordPlace = 0x42;
constexpr std::size_t kPasswordBytes = 40;
constexpr std::size_t kCreatedPlace = 0x72;  // the day of its making masks the password once more

using Page = std::array<unsigned char, kPage>;

void unmask(Page& page) {
    std::array<unsigned char, 256> state{};
    std::iota(state.begin(), state.end(), static_cast<unsigned char>(0));
    std::size_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = (j + state[i] + kMaskKey[i % kMaskKey.size()]) % state.size();
        std::swap(state[i], state[j]);
    }
    std::size_t i = 0;
    j = 0;
    for (std::size_t n = 0; n < kMaskedBytes; ++n) {
        i = (i + 1) % state.size();
        j = (j + state[i]) % state.size();
        std::swap(state[i], state[j]);
        page[kMaskedFrom + n] ^= state[(state[i] + state[j]) % state.size()];
    }
}

bool hasPassword(Page page) {
    unmask(page);
    double created = 0;
    std::memcpy(&created, &page[kCreatedPlace], sizeof created);
    const bool plausible = created > -1e9 && created < 1e9;
    const auto day = plausible ? static_cast<std::int32_t>(created) : 0;
    std::array<unsigned char, 4> mask{};
    std::memcpy(mask.data(), &day, mask.size());
    for (std::size_t i = 0; i < kPasswordBytes; ++i) {
        if (page[kPasswordPlace + i] != mask[i % mask.size()]) return true;
    }
    return false;
}

}  // namespace

void checkHeader(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file) throw Failure{"", "No se puede abrir el archivo para leerlo."};
    const auto bytes = static_cast<std::uint64_t>(file.tellg());
    Page page{};
    file.seekg(0);
    if (!file.read(reinterpret_cast<char*>(page.data()), kPage))
        throw Failure{"", "El archivo es demasiado corto: le falta una parte."};
    const auto says = [&page](const char* words) {
        return std::memcmp(&page[4], words, std::strlen(words)) == 0;
    };
    if (!says("Standard Jet DB") && !says("Standard ACE DB"))
        throw Failure{"", "No es un archivo de Access."};
    if (page[kVersionPlace] == 0)
        throw Failure{"",
                      "Es de una versión de Access anterior a la 2000. Conviértalo con Access al formato "
                      "2000 o 2002-2003 y vuelva a arrancar el programa."};
    if (bytes % kPage != 0)
        throw Failure{"", "El archivo no termina en una página entera: le falta una parte o está dañado."};
    if (hasPassword(page))
        throw Failure{"",
                      "El archivo está protegido con contraseña. Quítele la contraseña con Access y "
                      "vuelva a arrancar el programa."};
}

}  // namespace access_reader
