// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// Writes a PDF file with one page that is nothing but a picture, as a scanner makes it. The
/// picture's grey bytes are in a file of the desktop's folder; two pixels are one point of the
/// page.
std::filesystem::path writeScannedPage(const VirtualDesktop& desktop, const std::string& grayFile,
                                       int width, int height);

}  // namespace velmora::test
