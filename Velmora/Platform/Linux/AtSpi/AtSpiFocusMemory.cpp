// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiFocusMemory.h"

namespace velmora {

namespace {

constexpr qsizetype programLimit = 256;

}  // namespace

std::optional<AtSpiObject> AtSpiFocusMemory::told(const QString& program) const {
    const auto found = told_.constFind(program);
    return found == told_.constEnd() ? std::nullopt : std::optional(*found);
}

void AtSpiFocusMemory::tell(const AtSpiObject& object, bool hasFocus) {
    seen_.remove(object.bus);
    if (!hasFocus) {
        if (told(object.bus) == object) {
            told_.remove(object.bus);
        }
    } else if (told_.size() < programLimit || told_.contains(object.bus)) {
        told_.insert(object.bus, object);
    }
}

std::optional<AtSpiObject> AtSpiFocusMemory::seen(const QString& program,
                                                  const AtSpiObject& window) const {
    const auto found = seen_.constFind(program);
    return found != seen_.constEnd() && found->window == window ? std::optional(found->object)
                                                                : std::nullopt;
}

void AtSpiFocusMemory::see(const QString& program, const AtSpiObject& window,
                           const AtSpiObject& object) {
    if (seen_.size() < programLimit || seen_.contains(program)) {
        seen_.insert(program, {window, object});
    }
}

void AtSpiFocusMemory::forget(const QString& program) {
    told_.remove(program);
    seen_.remove(program);
}

void AtSpiFocusMemory::forgetAll() {
    told_.clear();
    seen_.clear();
    likely_.clear();
}

}  // namespace velmora
