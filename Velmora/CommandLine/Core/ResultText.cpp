// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/ResultText.h"

#include <algorithm>
#include <vector>

#include "Velmora/CommandLine/Core/TextLayout.h"

namespace velmora {

namespace {

constexpr std::size_t indentWidth = 2;
constexpr std::size_t widestColumn = 24;
constexpr std::size_t narrowestGlosses = 20;

std::string glossesText(const EntryDefinition& definition) {
    std::string text;
    for (const std::string& gloss : definition.glosses) {
        if (!text.empty()) {
            text.append("; ");
        }
        text.append(printable(gloss));
    }
    return text;
}

/// Every sense of an entry on one line.
std::string summary(const DictionaryEntry& entry) {
    std::string text;
    for (const EntryDefinition& definition : entry.definitions) {
        if (!text.empty()) {
            text.append("; ");
        }
        text.append(glossesText(definition));
    }
    return text;
}

std::string plainReading(const DictionaryEntry& entry) {
    return printable(entry.pinyinMarked);
}

/// The headword as it was met, and the other script's form where there is one.
std::string headline(const DictionaryEntry& entry, const std::string& matched,
                     const TextStyle& style) {
    std::string line = style.strong(printable(matched));
    const std::string& other = matched == entry.simplified ? entry.traditional : entry.simplified;
    if (other != matched) {
        line.append(" ").append(style.quiet("[" + printable(other) + "]"));
    }
    line.append("  ").append(readingText(entry.syllables, style));
    if (entry.hskLevel) {
        line.append("  ").append(style.quiet("HSK " + std::to_string(*entry.hskLevel)));
    }
    return line + "\n";
}

void appendSenses(std::string& text, const DictionaryEntry& entry, const TextStyle& style) {
    for (const EntryDefinition& definition : entry.definitions) {
        std::string label;
        if (definition.partOfSpeech) {
            label = printable(*definition.partOfSpeech) + " ";
        }
        const std::size_t used = indentWidth + columnsOf(label);
        text.append(indentWidth, ' ').append(style.quiet(label));
        text.append(wrapText(glossesText(definition), used, used, style.width)).append("\n");
    }
}

void appendExamples(std::string& text, const DictionaryEntry& entry, const TextStyle& style) {
    for (const ExampleSentence& example : entry.examples) {
        text.append("\n");
        for (const std::string& line : {example.hanzi, example.pinyin, example.english}) {
            text.append(indentWidth, ' ');
            text.append(wrapText(printable(line), indentWidth, indentWidth, style.width));
            text.append("\n");
        }
    }
}

/// One row of a table: word, reading, glosses.
struct Row {
    std::string word;
    const DictionaryEntry* entry;
};

std::size_t columnWidth(std::span<const Row> rows, std::string (*textOf)(const Row&)) {
    std::size_t width = 0;
    for (const Row& row : rows) {
        width = std::max(width, columnsOf(textOf(row)));
    }
    return std::min(width, widestColumn);
}

std::string wordOf(const Row& row) {
    return printable(row.word);
}
std::string readingOf(const Row& row) {
    return plainReading(*row.entry);
}

void appendTable(std::string& text, std::span<const Row> rows, std::size_t indent,
                 const TextStyle& style) {
    const std::size_t words = columnWidth(rows, wordOf);
    const std::size_t readings = columnWidth(rows, readingOf);
    const std::size_t glossColumn = indent + words + 2 + readings + 2;
    // A narrow terminal has no room for a third column: the glosses go below.
    const bool below = style.width > 0 && glossColumn + narrowestGlosses > style.width;
    for (const Row& row : rows) {
        const std::string word = padded(wordOf(row), words);
        text.append(indent, ' ').append(style.strong(word)).append("  ");
        text.append(readingText(row.entry->syllables, style));
        if (below) {
            const std::size_t column = indent + 2 * indentWidth;
            text.append("\n").append(column, ' ');
            text.append(wrapText(summary(*row.entry), column, column, style.width)).append("\n");
            continue;
        }
        const std::size_t own = columnsOf(readingOf(row));
        const std::size_t padding = own < readings ? readings - own : 0;
        const std::size_t used = indent + columnsOf(word) + 2 + own + padding + 2;
        text.append(padding + 2, ' ');
        text.append(wrapText(summary(*row.entry), used, glossColumn, style.width)).append("\n");
    }
}

void appendSection(std::string& text, std::string_view title,
                   const std::vector<DictionaryEntry>& entries, const std::string& matched,
                   const TextStyle& style) {
    if (entries.empty()) {
        return;
    }
    std::vector<Row> rows;
    rows.reserve(entries.size());
    for (const DictionaryEntry& entry : entries) {
        const bool traditional = matched.find(entry.simplified) == std::string::npos &&
                                 matched.find(entry.traditional) != std::string::npos;
        rows.push_back(
            {.word = traditional ? entry.traditional : entry.simplified, .entry = &entry});
    }
    text.append("\n").append(style.quiet(title)).append("\n");
    appendTable(text, rows, indentWidth, style);
}

}  // namespace

std::string readingText(std::span<const PinyinSyllable> syllables, const TextStyle& style) {
    std::string text;
    for (const PinyinSyllable& syllable : syllables) {
        if (!text.empty()) {
            text.append(" ");
        }
        text.append(style.toned(printable(syllable.marked), syllable.tone));
    }
    return text;
}

std::string resultText(const LookupResult& result, const TextStyle& style) {
    std::string text = headline(result.entry, result.matchedText, style);
    appendSenses(text, result.entry, style);
    appendExamples(text, result.entry, style);
    appendSection(text, "Also", result.alternatives, result.matchedText, style);
    if (result.range.length() > 1) {
        appendSection(text, "Characters", result.characterBreakdown, result.matchedText, style);
    }
    return text;
}

std::string resultsText(std::span<const LookupResult> results, const TextStyle& style) {
    std::string text;
    if (style.width > 0) {
        std::vector<Row> rows;
        rows.reserve(results.size());
        for (const LookupResult& result : results) {
            rows.push_back({.word = result.matchedText, .entry = &result.entry});
        }
        appendTable(text, rows, 0, style);
        return text;
    }
    for (const LookupResult& result : results) {
        text.append(printable(result.matchedText)).append("\t");
        text.append(plainReading(result.entry)).append("\t");
        text.append(summary(result.entry)).append("\n");
    }
    return text;
}

}  // namespace velmora
