// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

#include "Velmora/Platform/Settings.h"

namespace velmora {

/// Settings that last as long as this object.
class MemorySettings final : public Settings {
  public:
    std::optional<bool> boolean(const std::string& key) const override;
    std::optional<double> number(const std::string& key) const override;
    std::optional<std::string> text(const std::string& key) const override;
    void setBoolean(const std::string& key, bool value) override;
    void setNumber(const std::string& key, double value) override;
    void setText(const std::string& key, const std::string& value) override;

  private:
    std::map<std::string, std::string> values_;
};

}  // namespace velmora
