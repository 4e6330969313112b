// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "Tests/Views/ApprovedPicture.h"
#include "Tests/Views/SampleEntries.h"
#include "Tests/Views/ViewTest.h"

namespace velmora::test {

namespace {

using ColorScheme = DesktopAppearance::ColorScheme;

const std::string sentence = "妈妈每天学习中文，她知道中华人民共和国的意思。";

class PictureTest : public ViewTest {
  protected:
    /// Compares what the panel shows, in both appearances.
    void compare(const std::string& name) {
        const int ratio = static_cast<int>(panel().devicePixelRatio());
        const std::string suffix = ratio == 1 ? "" : "@" + std::to_string(ratio) + "x";
        appearance.set(ColorScheme::light);
        EXPECT_TRUE(matchesApproved(picture(), name + "-light" + suffix));
        appearance.set(ColorScheme::dark);
        EXPECT_TRUE(matchesApproved(picture(), name + "-dark" + suffix));
    }
};

/// The part of a picture's name that tells its font scale.
std::string percent(double scale) {
    return std::to_string(static_cast<int>(scale * 100 + 0.5));
}

class ScaledPictureTest : public PictureTest, public ::testing::WithParamInterface<double> {};

TEST_P(ScaledPictureTest, EntrySimplified) {
    showEntry(samples::study(), GetParam());
    compare("entry-simplified-" + percent(GetParam()));
}

TEST_P(ScaledPictureTest, EntryTraditional) {
    showEntry(samples::studyTraditional(), GetParam());
    compare("entry-traditional-" + percent(GetParam()));
}

TEST_P(ScaledPictureTest, Pinyin) {
    popover.showPinyin("xué xí", anchor, GetParam());
    compare("pinyin-" + percent(GetParam()));
}

TEST_P(ScaledPictureTest, SelectionOfThirtyWords) {
    showSelection(samples::words(30), sentence + sentence + sentence, GetParam());
    compare("selection-30-" + percent(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(FontScales, ScaledPictureTest, ::testing::Values(0.7, 1.0, 1.5));

TEST_F(PictureTest, ShortEntry) {
    showEntry(samples::water());
    compare("entry-short");
}

TEST_F(PictureTest, LongHeadwordAndReading) {
    showEntry(samples::longIdiom());
    compare("entry-idiom");
}

TEST_F(PictureTest, MoreSensesThanFit) {
    showEntry(samples::manySenses());
    compare("entry-many-senses");
}

TEST_F(PictureTest, EntryWithoutToneColors) {
    showEntry(samples::study(), 1, false);
    compare("entry-plain");
}

TEST_F(PictureTest, EntryWithoutCompositor) {
    compositor.set(false);
    showEntry(samples::study());
    compare("entry-opaque");
}

TEST_F(PictureTest, SelectionOfOneWord) {
    showSelection(samples::words(1), "学习");
    compare("selection-1");
}

TEST_F(PictureTest, PinyinLongerThanTheBubble) {
    popover.showPinyin("Zhōng huá Rén mín Gòng hé guó   xué xí   shuǐ", anchor, 1);
    compare("pinyin-long");
}

}  // namespace

}  // namespace velmora::test
