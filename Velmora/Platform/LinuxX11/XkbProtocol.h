// SPDX-License-Identifier: MIT
#pragma once

// For the files of this folder only, in place of the client library's header of the keyboard
// extension.

// A field of this header has the name of a C++ keyword.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitField
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif
