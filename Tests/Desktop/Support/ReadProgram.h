// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Tests/Desktop/Support/SampleText.h"
#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// A program whose text the user reads: how it is started on the sample text, and what can be
/// expected of it.
struct ReadProgram {
    using Command = std::vector<std::string>;

    std::string name;        ///< What the user calls it: "mousepad".
    std::string executable;  ///< Searched in PATH.
    std::string toolkit;     ///< For tables.
    bool isEditor = false;   ///< Typed keys appear in the document.
    /// Writes what the program needs into the desktop's folder and gives the command.
    Command (*prepare)(const VirtualDesktop& desktop, const SampleText& text);
    ChildProcess::Environment environment;
    /// What of a picture of its window is text, where that does not stand on a plain surface.
    Image (*textOf)(const Image& picture) = nullptr;
    double outline = 0;  ///< Pixels that its letters' outlines add to what `textOf` keeps.

    /// All that are known.
    static const std::vector<ReadProgram>& all();

    /// Throws std::runtime_error where the name is not known.
    static const ReadProgram& named(const std::string& name);

    /// An editor with large letters, for pictures.
    static ReadProgram forShow();

    bool isInstalled() const;
};

}  // namespace velmora::test
