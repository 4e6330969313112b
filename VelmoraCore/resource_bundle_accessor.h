// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// The folder with the resources of this library.
class ResourceBundle {
  public:
    /// The bundle of this library, found on first use: beside the executable, in
    /// `../share/velmora` of it when installed, or where the build put it. Ends the process with a
    /// message and status 2 where there is none.
    static const ResourceBundle& module();

    /// What `find` finds. Ends the process with `missingMessage` on standard error and status 2
    /// where that is nothing.
    static ResourceBundle require(const std::filesystem::path& executableFolder,
                                  const std::filesystem::path& buildTimePath);

    /// The first folder that can be opened of those that `module` tries; nothing where there is
    /// none.
    static std::optional<ResourceBundle> find(const std::filesystem::path& executableFolder,
                                              const std::filesystem::path& buildTimePath);

    /// What is said before the process ends.
    static std::string missingMessage(const std::filesystem::path& executableFolder,
                                      const std::filesystem::path& buildTimePath);

    const std::filesystem::path& folder() const { return folder_; }

    /// The file of this name and extension, or nothing where the bundle has none.
    std::optional<std::filesystem::path> path(std::string_view name,
                                              std::string_view extension) const;

  private:
    explicit ResourceBundle(std::filesystem::path folder);

    std::filesystem::path folder_;
};

}  // namespace velmora
