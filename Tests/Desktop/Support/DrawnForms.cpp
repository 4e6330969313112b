// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/DrawnForms.h"

namespace velmora::test {

namespace {

std::filesystem::path kept() {
    return std::filesystem::path(VELMORA_BUILD_FOLDER) / "drawn-forms.bin";
}

}  // namespace

std::filesystem::path DrawnForms::inCache(const std::filesystem::path& cacheHome) {
    return cacheHome / "velmora" / "glyphs.bin";
}

void DrawnForms::lend(const std::filesystem::path& cacheHome) {
    const std::filesystem::path file = inCache(cacheHome);
    std::error_code missing;
    std::filesystem::create_directories(file.parent_path(), missing);
    std::filesystem::copy_file(kept(), file, std::filesystem::copy_options::skip_existing, missing);
}

void DrawnForms::keep(const std::filesystem::path& cacheHome) {
    const std::filesystem::path partial = kept().string() + ".partial";
    std::filesystem::copy_file(inCache(cacheHome), partial,
                               std::filesystem::copy_options::overwrite_existing);
    std::filesystem::rename(partial, kept());
}

void DrawnForms::forget() {
    std::filesystem::remove(kept());
}

}  // namespace velmora::test
