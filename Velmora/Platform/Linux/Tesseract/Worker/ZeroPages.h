// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// Gives those pages of the heap back to the system that hold nothing but zeros; they read as
/// zeros again when they are needed. Tesseract sets up large empty tables for a classifier that
/// its neural networks never ask. For a process with one thread.
void giveBackZeroPages();

/// To be called when all languages are loaded, before there are other threads: from here on memory
/// comes as usual.
void closeZeroBlocks();

}  // namespace velmora
