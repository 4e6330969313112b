// SPDX-License-Identifier: MIT
// Two steps of Tesseract's start that fill tables for its old shape classifier, which its neural
// networks never ask: templates for each of some thousand characters, and the characters that it
// confuses. This program has its own functions of these names, which the library calls in place of
// its own, so that a language takes half the memory and a quarter of the time to load. A build of
// the library that does not look its own functions up by name goes on as ever.
#include <new>

// The names are the library's.
// NOLINTBEGIN(readability-identifier-naming)

namespace tesseract {

class UNICHARSET;
struct ADAPT_TEMPLATES_STRUCT;

struct ADAPT_CLASS_STRUCT {
    ~ADAPT_CLASS_STRUCT();  // The library's.
};

class UnicharAmbigs {
  public:
    void LoadUniversal(const UNICHARSET& encoder, UNICHARSET* characters);
};

/// Is handed an empty class to keep among the templates, which stay without it.
void AddAdaptedClass(ADAPT_TEMPLATES_STRUCT* templates, ADAPT_CLASS_STRUCT* added, int character);

void AddAdaptedClass(ADAPT_TEMPLATES_STRUCT* /*templates*/, ADAPT_CLASS_STRUCT* added,
                     int /*character*/) {
    added->~ADAPT_CLASS_STRUCT();
    ::operator delete(added);
}

void UnicharAmbigs::LoadUniversal(const UNICHARSET& /*encoder*/, UNICHARSET* /*characters*/) {}

}  // namespace tesseract

// NOLINTEND(readability-identifier-naming)
