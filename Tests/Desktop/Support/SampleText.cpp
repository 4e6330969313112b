// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/SampleText.h"

#include <stdexcept>

#include "VelmoraCore/BundledDictionary.h"

namespace velmora::test {

SampleText::SampleText()
    : lines_{"我们每天都在图书馆里学习汉语", "今天的天气很好适合出去散步呢",
             "他喜欢看电影也喜欢听音乐唱歌", "老师问我们明天上午有没有时间",
             "學生們在學校裡認真地學習歷史", "中国的历史文化非常丰富而有趣"},
      engine_(BundledDictionary::store()) {}

std::string SampleText::character(std::size_t line, std::size_t position) const {
    constexpr std::size_t bytes = 3;  // Of every character of these lines.
    return lines_.at(line).substr(position * bytes, bytes);
}

LookupResult SampleText::word(std::size_t line, std::size_t position) const {
    const auto result = engine_.lookup(lines_.at(line), static_cast<long long>(position));
    if (!result) {
        throw std::runtime_error("the dictionary does not know " + character(line, position));
    }
    return *result;
}

std::vector<LookupResult> SampleText::words(std::size_t line) const {
    return wordsOf(lines_.at(line));
}

std::vector<LookupResult> SampleText::wordsOf(const std::string& text) const {
    return engine_.lookups(text);
}

std::string SampleText::plain() const {
    std::string text = "\n\n\n";
    for (const std::string& line : lines_) {
        text += line + "\n\n";
    }
    return text;
}

std::string SampleText::html() const {
    std::string text =
        "<!doctype html><meta charset=utf-8><title>Sample</title>"
        "<body style=\"margin:80px 60px;font:20px 'Noto Sans CJK SC';"
        "background:white;color:black\">";
    for (const std::string& line : lines_) {
        text += "<p style=\"margin:20px 0\">" + line + "</p>";
    }
    return text;
}

std::string SampleText::openDocument() const {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document "
        "xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
        "xmlns:style=\"urn:oasis:names:tc:opendocument:xmlns:style:1.0\" "
        "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" "
        "xmlns:fo=\"urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0\" "
        "office:version=\"1.2\" office:mimetype=\"application/vnd.oasis.opendocument.text\">"
        "<office:styles><style:default-style style:family=\"paragraph\"><style:text-properties "
        "style:font-name-asian=\"Noto Sans CJK SC\" style:font-size-asian=\"15pt\" "
        "style:language-asian=\"zh\" style:country-asian=\"CN\" fo:font-size=\"15pt\"/>"
        "</style:default-style></office:styles><office:body><office:text><text:p/><text:p/>";
    for (const std::string& line : lines_) {
        text += "<text:p>" + line + "</text:p><text:p/>";
    }
    return text + "</office:text></office:body></office:document>";
}

}  // namespace velmora::test
