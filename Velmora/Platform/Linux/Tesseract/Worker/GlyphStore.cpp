// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphStore.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "Velmora/Platform/Recognition/CodePoint.h"

namespace velmora {

namespace {

constexpr std::uint32_t magic = 0x564C4731;  // "VLG1"
constexpr double middleSize = 24;            ///< Pixels: as most text, and as interfaces have it.
constexpr double smallSize = 13;
constexpr float sameForm = 0.94F;  ///< Forms that are more alike than this count once.
constexpr std::size_t mostEntries = 40000;

struct Header {
    std::uint32_t magic = 0;
    std::uint32_t count = 0;
    std::uint64_t key = 0;
};

struct Entry {
    char32_t character;
    GlyphFeatures::Values values;
};

/// The forms of one character that differ from each other.
using Forms = std::vector<GlyphFeatures::Values>;

void addForm(char32_t character, GlyphFonts& fonts, const GlyphStyle& style, Forms& forms) {
    const auto drawn = fonts.draw(character, style);
    const auto features = drawn ? GlyphFeatures::of(*drawn) : std::nullopt;
    if (features && std::none_of(forms.begin(), forms.end(), [&](const auto& known) {
            return features->similarity(known) >= sameForm;
        })) {
        forms.push_back(features->values());
    }
}

bool writeEntries(const std::string& path, std::uint64_t key, const std::vector<Entry>& entries) {
    std::string partial = path;
    partial.append(".").append(std::to_string(::getpid()));
    {
        std::ofstream file(partial, std::ios::binary | std::ios::trunc);
        const Header header{magic, static_cast<std::uint32_t>(entries.size()), key};
        file.write(reinterpret_cast<const char*>(&header), sizeof(header));
        for (const Entry& entry : entries) {
            const auto character = static_cast<std::uint32_t>(entry.character);
            file.write(reinterpret_cast<const char*>(&character), sizeof(character));
        }
        for (const Entry& entry : entries) {
            file.write(reinterpret_cast<const char*>(entry.values.data()),
                       static_cast<std::streamsize>(entry.values.size()));
        }
        if (!file.flush()) {
            std::remove(partial.c_str());
            return false;
        }
    }
    return std::rename(partial.c_str(), path.c_str()) == 0;
}

/// Into a list of the best, the best first.
void insertNearest(std::vector<GlyphStore::Neighbour>& best, const GlyphStore::Neighbour& neighbour,
                   std::size_t count) {
    if (best.size() >= count && (count == 0 || neighbour.similarity <= best.back().similarity)) {
        return;
    }
    const auto place =
        std::find_if(best.begin(), best.end(), [&](const GlyphStore::Neighbour& other) {
            return other.similarity < neighbour.similarity;
        });
    best.insert(place, neighbour);
    best.resize(std::min(best.size(), count));
}

}  // namespace

std::uint64_t GlyphStore::keyOf(const std::vector<char32_t>& characters,
                                const std::vector<FontFace>& faces) {
    std::uint64_t hash = 14695981039346656037ULL;  // FNV-1a.
    const auto mix = [&hash](std::uint64_t value) { hash = (hash ^ value) * 1099511628211ULL; };
    for (const char32_t character : characters) {
        mix(character);
    }
    for (const FontFace& face : faces) {
        for (const char letter : face.path) {
            mix(static_cast<unsigned char>(letter));
        }
        mix(static_cast<std::uint64_t>(face.index));
        mix(static_cast<std::uint64_t>(face.modified));
    }
    return hash;
}

bool GlyphStore::write(const std::string& path, const std::vector<char32_t>& characters,
                       GlyphFonts& fonts, const std::function<bool()>& cancelled) {
    std::vector<Forms> forms(characters.size());
    // Font by font, as opening one costs as much as drawing dozens of characters.
    for (std::size_t face = 0; face < fonts.faces().size(); ++face) {
        if (fonts.faces()[face].bold || fonts.faces()[face].bitmaps) {
            continue;  // As alike to the others as this comparison can tell.
        }
        for (const GlyphStyle& style : {GlyphStyle{face, middleSize, GlyphRendering::unhinted},
                                        GlyphStyle{face, smallSize, GlyphRendering::hinted}}) {
            for (std::size_t i = 0; i < characters.size(); ++i) {
                if (cancelled()) {
                    return false;
                }
                addForm(characters[i], fonts, style, forms[i]);
            }
        }
    }
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        for (const GlyphFeatures::Values& values : forms[i]) {
            if (entries.size() < mostEntries) {
                entries.push_back({characters[i], values});
            }
        }
    }
    return writeEntries(path, keyOf(characters, fonts.faces()), entries);
}

std::unique_ptr<GlyphStore> GlyphStore::map(const std::string& path, std::uint64_t key) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (descriptor < 0) {
        return nullptr;
    }
    Header header;
    const bool readable =
        ::fstat(descriptor, &status) == 0 &&
        ::pread(descriptor, &header, sizeof(header), 0) == static_cast<ssize_t>(sizeof(header)) &&
        header.magic == magic && header.key == key && header.count <= mostEntries;
    const std::size_t length =
        sizeof(header) + header.count * (sizeof(std::uint32_t) + GlyphFeatures::size);
    void* memory = readable && status.st_size == static_cast<off_t>(length)
                       ? ::mmap(nullptr, length, PROT_READ, MAP_PRIVATE, descriptor, 0)
                       : MAP_FAILED;
    ::close(descriptor);
    return memory == MAP_FAILED ? nullptr
                                : std::unique_ptr<GlyphStore>(new GlyphStore(memory, length));
}

GlyphStore::GlyphStore(void* memory, std::size_t length) : memory_(memory), length_(length) {
    const auto* bytes = static_cast<const std::byte*>(memory);
    Header header;
    std::memcpy(&header, bytes, sizeof(header));
    count_ = header.count;
    characters_ = reinterpret_cast<const std::uint32_t*>(bytes + sizeof(header));
    values_ = reinterpret_cast<const std::int8_t*>(characters_ + count_);
}

GlyphStore::~GlyphStore() {
    ::munmap(memory_, length_);
}

void GlyphStore::rest() const {
    // What a file stands behind comes back from it.
    ::madvise(memory_, length_, MADV_DONTNEED);
}

std::span<const std::int8_t, GlyphFeatures::size> GlyphStore::values(std::size_t entry) const {
    return std::span<const std::int8_t, GlyphFeatures::size>(values_ + entry * GlyphFeatures::size,
                                                             GlyphFeatures::size);
}

std::vector<GlyphStore::Neighbour> GlyphStore::nearest(const GlyphFeatures& ink, std::size_t count,
                                                       std::size_t letters) const {
    std::vector<Neighbour> best;
    std::vector<Neighbour> bestLetters;
    for (std::size_t i = 0; i < count_;) {
        // A character's entries follow each other.
        const std::uint32_t character = characters_[i];
        float similarity = 0;
        for (; i < count_ && characters_[i] == character; ++i) {
            similarity = std::max(similarity, ink.similarity(values(i)));
        }
        const Neighbour neighbour{static_cast<char32_t>(character), similarity};
        if (isHan(neighbour.character)) {
            insertNearest(best, neighbour, count);
        } else {
            insertNearest(bestLetters, neighbour, letters);
        }
    }
    best.insert(best.end(), bestLetters.begin(), bestLetters.end());
    return best;
}

float GlyphStore::similarity(const GlyphFeatures& ink, char32_t character) const {
    const std::uint32_t* last = characters_ + count_;
    float best = 0;
    for (const std::uint32_t* at =
             std::lower_bound(characters_, last, static_cast<std::uint32_t>(character));
         at != last && *at == static_cast<std::uint32_t>(character); ++at) {
        best = std::max(best, ink.similarity(values(static_cast<std::size_t>(at - characters_))));
    }
    return best;
}

}  // namespace velmora
