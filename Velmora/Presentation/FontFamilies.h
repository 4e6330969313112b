// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace velmora {

/// The families that every text of the program is set in, the preferred one first.
struct FontFamilies {
    QStringList simplified;   ///< A Latin family with every marked vowel, then mainland Chinese.
    QStringList traditional;  ///< The same with the forms of traditional script.

    /// Chooses among what is installed: the desktop's own family where it can write pinyin.
    static FontFamilies installed();
};

}  // namespace velmora
