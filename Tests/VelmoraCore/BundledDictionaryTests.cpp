// SPDX-License-Identifier: MIT
#include "VelmoraCore/BundledDictionary.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "VelmoraCore/LookupEngine.h"
#include "VelmoraCore/SeedDictionary.h"
#include "VelmoraCore/resource_bundle_accessor.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;

/// A folder of its own for each test.
class Files : public testing::Test {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "velmora-core-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder_ = name;
    }
    void TearDown() override { fs::remove_all(folder_); }

    std::string write(const std::string& content) {
        const fs::path path = folder_ / "list.u8";
        std::ofstream(path, std::ios::binary) << content;
        return path.string();
    }

    static std::optional<DictionaryError> errorOf(const std::string& path) {
        const auto loaded = BundledDictionary::load(path);
        if (loaded.error) {
            EXPECT_EQ(loaded.store->allEntries(), SeedDictionary::entries());
        }
        return loaded.error;
    }

    fs::path folder_;
};

using LoadedDictionary = Files;
using Bundle = Files;

TEST_F(LoadedDictionary, seed_entries_come_first) {
    const auto loaded = BundledDictionary::load(write("學習 学习 [xue2 xi2] /to learn/\n"));
    EXPECT_FALSE(loaded.error);
    ASSERT_EQ(loaded.store->entryCount(), 10U);
    const auto result = LookupEngine(loaded.store).lookup("学习", 0);
    EXPECT_EQ(result->entry, SeedDictionary::entries()[0]);
    ASSERT_EQ(result->alternatives.size(), 1U);
    EXPECT_EQ(result->alternatives[0].definitions[0].glosses[0], "to learn");
}

TEST_F(LoadedDictionary, degrades_to_the_seed_entries) {
    EXPECT_EQ(errorOf((folder_ / "nothing").string()), DictionaryError::missing);
    EXPECT_EQ(errorOf(folder_.string()), DictionaryError::unreadable);
    EXPECT_EQ(errorOf(write("")), DictionaryError::noEntry);
    EXPECT_EQ(errorOf(write("# a\n# b [c] /d/\n")), DictionaryError::noEntry);
    EXPECT_EQ(errorOf(write("甲 甲 [a1] /x/\n\xFF")), DictionaryError::notUtf8);
    EXPECT_EQ(errorOf(write("甲 甲 [a1] /\xED\xA0\x80/\n")), DictionaryError::notUtf8);
    EXPECT_EQ(errorOf(std::string("a\0b", 3)), DictionaryError::missing);
    for (const auto error : {DictionaryError::missing, DictionaryError::unreadable,
                             DictionaryError::notUtf8, DictionaryError::noEntry}) {
        EXPECT_FALSE(description(error).empty());
    }
}

TEST_F(LoadedDictionary, never_waits_for_a_pipe) {
    const std::string path = (folder_ / "pipe").string();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(errorOf(path), DictionaryError::unreadable);
    EXPECT_EQ(errorOf("/dev/zero"), DictionaryError::unreadable);
}

TEST_F(LoadedDictionary, refuses_files_beyond_the_limit) {
    const std::string path = write("");
    ASSERT_EQ(truncate(path.c_str(), static_cast<off_t>(DictionaryText::maxFileSize) + 1), 0);
    EXPECT_EQ(errorOf(path), DictionaryError::unreadable);
}

TEST_F(LoadedDictionary, reads_lists_that_are_written_oddly) {
    const std::string line = "甲 甲 [a1] /x/";
    EXPECT_EQ(BundledDictionary::load(write("\xEF\xBB\xBF" + line)).store->entryCount(), 10U);
    const auto marked = BundledDictionary::load(write("\xEF\xBB\xBF乙 甲 [a1] /x/"));
    EXPECT_EQ(marked.store->entries("乙").size(), 1U);
    EXPECT_EQ(BundledDictionary::load(write("\xEF\xBB\xBF# c\r\n" + line)).store->entryCount(),
              10U);
    EXPECT_EQ(BundledDictionary::load(write(line + "\r\n" + line + "\r\n")).store->entryCount(),
              11U);
    EXPECT_EQ(BundledDictionary::load(write(line + "\r" + line + "\v" + line + "\u2028" + line))
                  .store->entryCount(),
              13U);
    EXPECT_EQ(BundledDictionary::load(write(line + std::string(3, '\0') + "\n" + line))
                  .store->entryCount(),
              10U);
}

TEST_F(LoadedDictionary, a_line_of_fifty_megabytes_is_a_line) {
    std::string text = "甲 甲 [a1] /";
    text.append(std::size_t{50} << 20, 'x');
    text += "/\n乙 乙 [b1] /y/\n";
    text.append(std::size_t{1} << 20, '#');
    const auto loaded = BundledDictionary::load(write(text));
    ASSERT_EQ(loaded.store->entryCount(), 11U);
    EXPECT_EQ(loaded.store->entries("甲").at(0).definitions[0].glosses[0].size(),
              std::size_t{50} << 20);
    EXPECT_EQ(loaded.store->entries("乙").size(), 1U);
}

TEST_F(LoadedDictionary, nothing_happens_when_the_file_shrinks_later) {
    const std::string path = write("甲 甲 [a1] /x/\n");
    const auto loaded = BundledDictionary::load(path);
    ASSERT_EQ(truncate(path.c_str(), 0), 0);
    EXPECT_EQ(loaded.store->entries("甲").at(0).definitions[0].glosses[0], "x");
}

TEST_F(Bundle, is_looked_for_in_three_places) {
    const fs::path beside = folder_ / "bin" / "Velmora_VelmoraCore.bundle";
    const fs::path installed = folder_ / "share/velmora/Velmora_VelmoraCore.bundle";
    const fs::path built = folder_ / "built.bundle";
    fs::create_directories(folder_ / "bin");
    EXPECT_FALSE(ResourceBundle::find(folder_ / "bin", built));
    fs::create_directories(built);
    EXPECT_EQ(ResourceBundle::find(folder_ / "bin", built)->folder(), built);
    fs::create_directories(installed);
    EXPECT_EQ(ResourceBundle::find(folder_ / "bin", built)->folder(), installed);
    std::ofstream(beside) << "a file is no bundle";
    EXPECT_EQ(ResourceBundle::find(folder_ / "bin", built)->folder(), installed);
    fs::remove(beside);
    fs::create_directories(beside);
    EXPECT_EQ(ResourceBundle::find(folder_ / "bin", built)->folder(), beside);
}

TEST_F(Bundle, tells_which_files_it_has) {
    fs::create_directories(folder_ / "b");
    const auto bundle = ResourceBundle::find(folder_, folder_ / "b");
    ASSERT_TRUE(bundle);
    EXPECT_FALSE(bundle->path("cedict_ts", "u8"));
    std::ofstream(folder_ / "b" / "cedict_ts.u8") << "x";
    EXPECT_EQ(bundle->path("cedict_ts", "u8"), folder_ / "b" / "cedict_ts.u8");
}

TEST_F(Bundle, the_message_names_both_paths) {
    EXPECT_EQ(ResourceBundle::missingMessage("/a", "/b/c.bundle"),
              "could not load resource bundle: from /a/Velmora_VelmoraCore.bundle or /b/c.bundle");
}

TEST_F(Bundle, its_absence_ends_the_process_with_the_message) {
    const fs::path absent = folder_ / "none.bundle";
    EXPECT_EXIT(ResourceBundle::require(folder_, absent), testing::ExitedWithCode(2),
                "could not load resource bundle: from .*/Velmora_VelmoraCore.bundle or "
                ".*/none.bundle\n$");
    fs::create_directories(absent);
    EXPECT_EQ(ResourceBundle::require(folder_, absent).folder(), absent);
}

TEST(BundledDictionary, the_build_made_the_bundle) {
    EXPECT_TRUE(fs::is_directory(ResourceBundle::module().folder()));
    EXPECT_EQ(&ResourceBundle::module(), &ResourceBundle::module());
}

TEST(BundledDictionary, entries_and_store_are_the_same_and_shared) {
    const auto& entries = BundledDictionary::entries();
    EXPECT_EQ(&entries, &BundledDictionary::entries());
    const auto store = BundledDictionary::store();
    EXPECT_EQ(store, BundledDictionary::store());
    ASSERT_EQ(entries.size(), store->entryCount());
    for (std::size_t index = 0; index < entries.size(); index += 97) {
        ASSERT_EQ(entries[index], store->entry(index));
    }
    for (std::size_t index = 0; index < 9; ++index) {
        EXPECT_EQ(entries[index], SeedDictionary::entries()[index]);
    }
    EXPECT_EQ(BundledDictionary::error().has_value(), entries.size() == 9);
}

TEST(BundledDictionary, is_loaded_once_by_whoever_comes_first) {
    std::vector<std::thread> threads;
    std::vector<const DictionaryStore*> stores(4);
    for (std::size_t index = 0; index < stores.size(); ++index) {
        threads.emplace_back([&, index] { stores[index] = BundledDictionary::store().get(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(stores, std::vector<const DictionaryStore*>(4, stores[0]));
}

}  // namespace
}  // namespace velmora
