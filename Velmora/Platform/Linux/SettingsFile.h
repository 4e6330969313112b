// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>

#include "Velmora/Platform/Linux/IniDocument.h"
#include "Velmora/Platform/Settings.h"

namespace velmora {

/// The settings in a text file, read once, when this object is made. Keys stand in group
/// [General]; a key "Group/name" stands in a group of its own. Every set replaces the file in one
/// step, so that nobody ever reads half of it; what the file holds besides is kept. A file that
/// cannot be read, is too large to be one of ours, or may not be written is left alone, and what
/// is set holds for the life of the process.
class SettingsFile final : public Settings {
  public:
    /// Nothing: settings last as long as the process.
    explicit SettingsFile(std::optional<std::filesystem::path> path);

    /// `Velmora/Velmora.conf` in the user's folder for configuration.
    static std::optional<std::filesystem::path> standardPath();

    std::optional<bool> boolean(const std::string& key) const override;
    std::optional<double> number(const std::string& key) const override;
    std::optional<std::string> text(const std::string& key) const override;
    void setBoolean(const std::string& key, bool value) override;
    void setNumber(const std::string& key, double value) override;
    void setText(const std::string& key, const std::string& value) override;

  private:
    void read();
    void write() const;

    std::optional<std::filesystem::path> path_;
    IniDocument document_;
};

}  // namespace velmora
