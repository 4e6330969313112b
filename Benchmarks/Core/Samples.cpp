// SPDX-License-Identifier: MIT
#include "Benchmarks/Core/Samples.h"

#include "Benchmarks/Core/Rival.h"
#include "VelmoraCore/Utf8.h"

namespace velmora::benchmarks {
namespace {

constexpr std::string_view prose =
    "今天早上天气很好，我和朋友一起去图书馆学习中文。路上的人不多，公共汽车也不太挤，我们很快就到了"
    "。"
    "图书馆里非常安静，有的人在看报纸，有的人在用电脑写论文。我先复习了昨天的生词，然后开始阅读一篇"
    "关于"
    "中华人民共和国经济发展的文章。虽然有些句子比较复杂，但是用词典查一查就明白了。老师说过，学习语"
    "言最"
    "重要的是坚持，只要每天都花一点时间，就一定会有进步。中午我们在附近的小饭馆吃了饺子和西红柿炒鸡"
    "蛋，"
    "味道好极了！下午三点半，朋友突然接到一个电话，原来他的妹妹从北京来看他，正在火车站等着呢。于是"
    "我们"
    "赶紧收拾东西，坐地铁去接她。她带来了很多礼物，还告诉我们不少有意思的事情：比如她的公司最近开发"
    "了一种"
    "新的人工智能软件，可以自动翻译各种各样的技术资料。晚上回到宿舍以后，我把今天学到的成语“塞翁失"
    "马”"
    "写在笔记本上，希望明天考试的时候能用得上。";

}  // namespace

std::vector<std::size_t> scalarStarts(std::string_view text) {
    std::vector<std::size_t> starts;
    for (std::size_t at = 0; at < text.size(); at += utf8ScalarAt(text.data() + at).length) {
        starts.push_back(at);
    }
    starts.push_back(text.size());
    return starts;
}

std::string prefix(const std::string& text, std::size_t characters) {
    const std::vector<std::size_t> starts = scalarStarts(text);
    return characters < starts.size() ? text.substr(0, starts[characters]) : text;
}

std::string runningText(std::size_t characters) {
    std::string text;
    while (text.size() < 3 * characters) {
        text += prose;
    }
    return prefix(text, characters);
}

std::string wordSalad(const std::string& wordListPath, std::size_t characters) {
    const std::string list = fileText(wordListPath);
    std::string text;
    std::size_t number = 0;
    forEachRivalLine(list, [&](const RivalLine& line) {
        if (++number % 29 == 0 && text.size() < 4 * characters) {
            text += line.simplified;
        }
    });
    return prefix(text, characters);
}

}  // namespace velmora::benchmarks
