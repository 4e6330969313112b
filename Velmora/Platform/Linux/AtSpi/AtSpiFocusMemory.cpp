// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiFocusMemory.h"

namespace velmora {

namespace {

constexpr qsizetype programLimit = 256;
constexpr auto vainSearchHolds = std::chrono::seconds(10);

}  // namespace

std::optional<AtSpiObject> AtSpiFocusMemory::told(const QString& program) const {
    const auto found = told_.constFind(program);
    return found == told_.constEnd() ? std::nullopt : std::optional(*found);
}

void AtSpiFocusMemory::tell(const AtSpiObject& object, bool hasFocus) {
    seen_.remove(object.bus);
    vain_.remove(object.bus);
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

bool AtSpiFocusMemory::searchedInVain(const QString& program, const AtSpiObject& window,
                                      Clock::time_point now) const {
    const auto found = vain_.constFind(program);
    return found != vain_.constEnd() && found->window == window &&
           now - found->when < vainSearchHolds;
}

void AtSpiFocusMemory::searchInVain(const QString& program, const AtSpiObject& window,
                                    Clock::time_point now) {
    if (vain_.size() < programLimit || vain_.contains(program)) {
        vain_.insert(program, {window, now});
    }
}

void AtSpiFocusMemory::forget(const QString& program) {
    told_.remove(program);
    seen_.remove(program);
    vain_.remove(program);
}

void AtSpiFocusMemory::forgetAll() {
    told_.clear();
    seen_.clear();
    vain_.clear();
    likely_.clear();
}

}  // namespace velmora
