// SPDX-License-Identifier: MIT
#include "VelmoraCore/DictionaryStore.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "Tests/VelmoraCore/RandomTexts.h"
#include "VelmoraCore/CanonicalText.h"
#include "VelmoraCore/CedictParser.h"
#include "VelmoraCore/SeedDictionary.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

DictionaryEntry word(const std::string& traditional, const std::string& simplified,
                     const std::string& gloss = "gloss") {
    EntryDefinition definition;
    definition.glosses = {gloss};
    return {simplified, traditional, "a1", {definition}};
}

DictionaryStore storeOf(const std::vector<std::string>& headwords) {
    std::vector<DictionaryEntry> entries;
    for (const std::string& headword : headwords) {
        entries.push_back(word(headword, headword));
    }
    return DictionaryStore(std::move(entries));
}

std::string matched(const DictionaryStore& store, const std::string& text, long long offset) {
    const auto match = store.longestMatchCovering(text, offset);
    return match ? match->text : "";
}

std::vector<std::string> glosses(const std::vector<DictionaryEntry>& entries) {
    std::vector<std::string> texts;
    for (const DictionaryEntry& entry : entries) {
        texts.push_back(entry.definitions.at(0).glosses.at(0));
    }
    return texts;
}

using Texts = std::vector<std::string>;

TEST(DictionaryStore, an_empty_one_finds_nothing) {
    const DictionaryStore store({});
    EXPECT_EQ(store.maxHeadwordLength(), 1);
    EXPECT_EQ(store.entryCount(), 0U);
    EXPECT_FALSE(store.longestMatchCovering("中文", 0));
    EXPECT_TRUE(store.entries("中").empty());
    EXPECT_TRUE(store.entries("").empty());
    EXPECT_TRUE(store.allEntries().empty());
}

TEST(DictionaryStore, finds_the_seed_words_from_either_character) {
    const DictionaryStore store(SeedDictionary::entries());
    for (const long long offset : {0, 1}) {
        const auto match = store.longestMatchCovering("学习中文", offset);
        ASSERT_TRUE(match);
        EXPECT_EQ(match->text, "学习");
        EXPECT_EQ(match->range, (MatchedTextRange{0, 2}));
        EXPECT_EQ(match->entries, (std::vector{SeedDictionary::entries()[0]}));
    }
    EXPECT_EQ(store.longestMatchCovering("学习中文", 2)->range, (MatchedTextRange{2, 4}));
    EXPECT_EQ(store.longestMatchCovering("学习中文", 3)->text, "中文");
}

TEST(DictionaryStore, finds_nothing_outside_the_text) {
    const DictionaryStore store(SeedDictionary::entries());
    EXPECT_FALSE(store.longestMatchCovering("学习", 2));
    EXPECT_FALSE(store.longestMatchCovering("学习", -1));
    EXPECT_FALSE(store.longestMatchCovering("", 0));
    EXPECT_FALSE(store.longestMatchCovering("学习", 9223372036854775807LL));
}

TEST(DictionaryStore, longer_words_win_and_then_the_leftmost) {
    EXPECT_EQ(matched(storeOf({"乙丙", "甲乙丙", "丙丁"}), "甲乙丙丁", 2), "甲乙丙");
    EXPECT_EQ(matched(storeOf({"甲乙", "乙丙", "乙"}), "甲乙丙", 1), "甲乙");
    EXPECT_EQ(matched(storeOf({"甲乙", "乙丙丁"}), "甲乙丙丁", 1), "乙丙丁");
    EXPECT_EQ(matched(storeOf({"甲乙", "甲乙丙丁"}), "甲乙丙丁", 1), "甲乙丙丁");
    EXPECT_EQ(matched(storeOf({"甲乙", "甲乙丙丁"}), "甲乙丙戊", 1), "甲乙");
}

TEST(DictionaryStore, words_that_end_before_the_position_are_passed_over) {
    EXPECT_EQ(matched(storeOf({"甲乙丙", "丁"}), "甲乙丙丁", 3), "丁");
    EXPECT_EQ(matched(storeOf({"甲乙丙", "丁戊"}), "甲乙丙丁", 3), "");
    EXPECT_EQ(matched(storeOf({"甲乙", "甲乙丙"}), "甲乙丙", 2), "甲乙丙");
}

TEST(DictionaryStore, looks_headwords_up_exactly) {
    const DictionaryStore store(SeedDictionary::entries());
    EXPECT_EQ(store.entries("學習"), store.entries("学习"));
    EXPECT_EQ(store.entries("学习").size(), 1U);
    EXPECT_TRUE(store.entries("学 ").empty());
    EXPECT_TRUE(store.entries(" 学").empty());
    EXPECT_TRUE(store.entries("学习中").empty());
    const DictionaryStore latin = storeOf({"Ab", "甲乙"});
    EXPECT_EQ(latin.entries("Ab").size(), 1U);
    EXPECT_TRUE(latin.entries("ab").empty());
    EXPECT_TRUE(latin.entries("甲").empty());
}

TEST(DictionaryStore, keeps_entries_of_one_headword_in_order) {
    const DictionaryStore store({word("甲", "乙", "1"), word("乙", "甲", "2"),
                                 word("甲", "甲", "3"), word("丙", "乙", "4")});
    EXPECT_EQ(glosses(store.entries("甲")), (Texts{"1", "2", "3"}));
    EXPECT_EQ(glosses(store.entries("乙")), (Texts{"1", "2", "4"}));
    EXPECT_EQ(glosses(store.entries("丙")), (Texts{"4"}));
    EXPECT_EQ(glosses(store.longestMatchCovering("甲", 0)->entries), (Texts{"1", "2", "3"}));
    const DictionaryEntry twice = word("丁", "丁");
    EXPECT_EQ(DictionaryStore({twice, twice}).entries("丁"), (std::vector{twice, twice}));
}

TEST(DictionaryStore, an_empty_headword_is_not_indexed) {
    const DictionaryStore store({word("", "甲"), word("乙", ""), word("", "")});
    EXPECT_EQ(store.entries("甲").size(), 1U);
    EXPECT_EQ(store.entries("乙").size(), 1U);
    EXPECT_TRUE(store.entries("").empty());
    EXPECT_EQ(store.entryCount(), 3U);
    EXPECT_EQ(store.maxHeadwordLength(), 1);
}

TEST(DictionaryStore, lengths_count_characters) {
    EXPECT_EQ(storeOf({"e\u0301中\uFE00👨‍👩‍👧"}).maxHeadwordLength(), 3);
    EXPECT_EQ(storeOf({"甲", "甲乙丙丁"}).maxHeadwordLength(), 4);
}

TEST(DictionaryStore, equivalent_spellings_are_one_headword) {
    const DictionaryStore store({word("caf\u00E9", "cafe\u0301", "1"),
                                 word("\u8C48", "\uF900", "2"), word("\uAC00", "\uAC00", "3")});
    EXPECT_EQ(store.entries("cafe\u0301").size(), 1U);
    EXPECT_EQ(store.entries("caf\u00E9").size(), 1U);
    EXPECT_EQ(store.entries("\uF900").size(), 1U);
    EXPECT_EQ(matched(store, "x\u1100\u1161", 1), "\u1100\u1161");
    EXPECT_EQ(matched(store, "cafe\u0301", 3), "cafe\u0301");
    EXPECT_EQ(matched(store, "cafe", 3), "");
    EXPECT_EQ(matched(store, "\u8C48\uFE00", 0), "");
}

TEST(DictionaryStore, grows_amid_headwords_that_continue_each_other) {
    std::vector<DictionaryEntry> entries;
    std::vector<std::string> headwords;
    std::string headword;
    for (char32_t scalar = 0x4E00; scalar < 0x4E00 + 3000; ++scalar) {
        appendUtf8(headword, scalar);
        if (scalar % 100 == 0) {
            headwords.push_back(headword);
            entries.emplace_back(headword, headword, "a1", std::vector<EntryDefinition>());
        }
    }
    const DictionaryStore store(entries);
    for (const std::string& known : headwords) {
        EXPECT_EQ(store.entries(known).size(), 1U);
    }
}

TEST(DictionaryStore, grows_with_what_it_holds) {
    std::vector<DictionaryEntry> entries;
    std::vector<std::string> headwords;
    for (char32_t first = 0x4E00; first < 0x4E00 + 120; ++first) {
        for (char32_t second = 0x5000; second < 0x5000 + 60; ++second) {
            std::string headword;
            for (const char32_t scalar : {first, second, first}) {
                appendUtf8(headword, scalar);
            }
            headwords.push_back(headword);
        }
    }
    const DictionaryStore store = storeOf(headwords);
    for (const std::string& headword : headwords) {
        ASSERT_EQ(store.entries(headword).size(), 1U);
        ASSERT_EQ(matched(store, "一" + headword + "一", 2), headword);
    }
    EXPECT_EQ(store.maxHeadwordLength(), 3);
}

TEST(DictionaryStore, lines_of_a_word_list_come_behind_the_given_entries) {
    const std::string list =
        "# c\r\n學習 学习 [xue2 xi2] /to learn/CL:a/\r\n\r\nx\r\n\t甲 乙 [a1]/b/\r\n學 学 [xue2] "
        "/c/";
    const DictionaryStore store(SeedDictionary::entries(), DictionaryText(list));
    EXPECT_EQ(store.entryCount(), 12U);
    EXPECT_EQ(store.wordListEntryCount(), 3U);
    const auto all = store.allEntries();
    const auto parsed = CedictParser::parse(list);
    ASSERT_EQ(parsed.size(), 3U);
    for (std::size_t index = 0; index < 3; ++index) {
        EXPECT_EQ(all[9 + index].simplified, parsed[index].simplified);
        EXPECT_EQ(all[9 + index].traditional, parsed[index].traditional);
        EXPECT_EQ(all[9 + index].pinyinNumbered, parsed[index].pinyinNumbered);
        EXPECT_EQ(all[9 + index].pinyinMarked, parsed[index].pinyinMarked);
        EXPECT_EQ(all[9 + index].syllables, parsed[index].syllables);
        EXPECT_EQ(all[9 + index].definitions[0].glosses, parsed[index].definitions[0].glosses);
        EXPECT_FALSE(all[9 + index].definitions[0].partOfSpeech);
    }
    EXPECT_EQ(store.entries("学习")[0], SeedDictionary::entries()[0]);
    EXPECT_EQ(store.entries("学习")[1].pinyinNumbered, "xue2 xi2");
}

TEST(DictionaryStore, an_entry_keeps_its_identifiers) {
    const std::string list = "甲 甲 [a1] /x/\n乙 乙 [b1] /y/\n";
    const DictionaryStore store({}, DictionaryText(list));
    EXPECT_EQ(store.entries("甲"), store.entries("甲"));
    EXPECT_EQ(store.longestMatchCovering("甲", 0)->entries, store.entries("甲"));
    EXPECT_EQ(store.allEntries()[1], store.entries("乙")[0]);
    EXPECT_NE(store.entry(0).id, store.entry(1).id);
    EXPECT_NE(store.entry(0).id, store.entry(0).definitions[0].id);
    EXPECT_NE(store.entry(0).definitions[0].id, store.entry(1).definitions[0].id);
    EXPECT_NE(DictionaryStore({}, DictionaryText(list)).entry(0).id, store.entry(0).id);
}

TEST(DictionaryStore, matches_are_equal_member_by_member) {
    const DictionaryStore store(SeedDictionary::entries());
    const auto match = *store.longestMatchCovering("学习", 0);
    EXPECT_EQ(match, *store.longestMatchCovering("学习", 1));
    DictionaryStore::Match other = match;
    other.text = "x";
    EXPECT_NE(match, other);
    other = match;
    other.range.start = 1;
    EXPECT_NE(match, other);
    other = match;
    other.entries.clear();
    EXPECT_NE(match, other);
}

TEST(DictionaryStore, very_long_headwords_do_no_harm) {
    std::string longWord;
    for (std::size_t count = 0; count < HeadwordIndex::longestHeadword; ++count) {
        longWord += "甲";
    }
    const DictionaryStore store = storeOf({longWord, "甲乙", longWord + "乙"});
    const auto length = static_cast<long long>(HeadwordIndex::longestHeadword);
    EXPECT_EQ(store.maxHeadwordLength(), length);
    EXPECT_EQ(store.entries(longWord).size(), 1U);
    EXPECT_TRUE(store.entries(longWord + "乙").empty());
    EXPECT_EQ(matched(store, longWord + "乙", length), "甲乙");
    EXPECT_EQ(matched(store, "乙" + longWord, length), longWord);
}

/// The longest headword over a position, found by comparing every substring with every headword.
std::optional<MatchedTextRange> findLiterally(const Texts& headwords, const CharacterText& text,
                                              std::size_t position) {
    std::optional<MatchedTextRange> best;
    for (std::size_t start = 0; start <= position; ++start) {
        for (std::size_t end = position + 1; end <= text.count(); ++end) {
            const MatchedTextRange range{static_cast<long long>(start),
                                         static_cast<long long>(end)};
            if (best && range.length() <= best->length()) {
                continue;
            }
            for (const std::string& headword : headwords) {
                if (CharacterText(headword).count() == end - start &&
                    canonicallyEqual(headword, text.slice(start, end))) {
                    best = range;
                    break;
                }
            }
        }
    }
    return best;
}

TEST(DictionaryStore, agrees_with_comparing_every_substring) {
    RandomTexts texts(23);
    std::size_t found = 0;
    for (int round = 0; round < 150; ++round) {
        Texts headwords;
        for (std::size_t count = texts.below(30); count > 0; --count) {
            headwords.push_back(texts.next(4));
        }
        const DictionaryStore store = storeOf(headwords);
        std::string source = texts.next(10);
        for (const std::string& headword : headwords) {
            source += texts.below(3) == 0 ? headword : texts.next(1);
        }
        const CharacterText text(source);
        for (std::size_t position = 0; position < text.count(); ++position) {
            const auto expected = findLiterally(headwords, text, position);
            const auto match = store.longestMatchCovering(source, static_cast<long long>(position));
            ASSERT_EQ(match.has_value(), expected.has_value()) << source << " " << position;
            if (match) {
                ASSERT_EQ(match->range, *expected) << source << " " << position;
                ++found;
            }
        }
    }
    EXPECT_GT(found, 500U);
}

TEST(DictionaryStore, many_threads_read_one_store) {
    std::string list;
    for (int number = 0; number < 200; ++number) {
        list += "甲 甲 [a1] /" + std::to_string(number) + "/\n甲乙e\u0301 甲丙 [a1 b2] /x/\n";
    }
    const DictionaryStore store(SeedDictionary::entries(), DictionaryText(list));
    const std::string text = "学习甲乙e\u0301甲丙中文👍🏽";
    const auto expected = store.longestMatchCovering(text, 4);
    ASSERT_TRUE(expected);
    std::vector<std::thread> readers;
    std::vector<int> equal(8, 0);
    for (std::size_t reader = 0; reader < equal.size(); ++reader) {
        readers.emplace_back([&, reader] {
            for (int round = 0; round < 20; ++round) {
                equal[reader] += static_cast<int>(store.longestMatchCovering(text, 4) == expected);
            }
        });
    }
    for (std::thread& reader : readers) {
        reader.join();
    }
    EXPECT_EQ(equal, std::vector<int>(8, 20));
}

}  // namespace
}  // namespace velmora
