// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace velmora {

/// The user's persistent settings. Main thread. Every set is stored at once; a set that cannot be
/// stored (a full disk, a read-only folder) still holds for the life of the process.
class Settings {
  public:
    virtual ~Settings() = default;

    /// Nothing where the key is absent; `true` and `1` are true, any other text is false.
    virtual std::optional<bool> boolean(const std::string& key) const = 0;

    /// Nothing where the key is absent; 0 where its text is no number.
    virtual std::optional<double> number(const std::string& key) const = 0;

    virtual std::optional<std::string> text(const std::string& key) const = 0;

    virtual void setBoolean(const std::string& key, bool value) = 0;
    virtual void setNumber(const std::string& key, double value) = 0;
    virtual void setText(const std::string& key, const std::string& value) = 0;
};

}  // namespace velmora
