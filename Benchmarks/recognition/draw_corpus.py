#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Draws screens of Chinese text whose every character box is known.

    draw_corpus.py --cedict cedict_ts.u8 --out DIR --half tune|report [--screens N] [--hovers N]
                   [--seed N] [--more-fonts]

writes DIR/NNNN.png (1200 x 700 pixels) and DIR/index.json. The two halves share no sentence, no
dictionary word, no random seed and only some of the fonts: recognition is tuned on the one and
reported on the other. With --screens a spread of that many screens is drawn instead of all. Other
screens of the same half come from another --seed, each hovered --hovers times; with --more-fonts
the tuned half is also drawn in fonts and weights that neither half has otherwise.
"""
import argparse
import itertools
import json
import os
import random
import zlib

import cairo
import gi
import numpy

gi.require_version("Pango", "1.0")
gi.require_version("PangoCairo", "1.0")
from gi.repository import Pango, PangoCairo  # noqa: E402

from sentences import REPORT_LABELS, REPORT_SENTENCES, TUNE_LABELS, TUNE_SENTENCES  # noqa: E402

WIDTH, HEIGHT = 1200, 700
HOVERS_PER_SCREEN = 6
SEEDS = {"tune": 20, "report": 90210}

# Family for simplified and for traditional text.
FONTS = {
    "tune": {
        "noto-sans": ("Noto Sans CJK SC", "Noto Sans CJK TC"),
        "noto-serif": ("Noto Serif CJK SC", "Noto Serif CJK TC"),
        "wqy-zenhei": ("WenQuanYi Zen Hei", "WenQuanYi Zen Hei"),
    },
    "report": {
        "noto-sans": ("Noto Sans CJK SC", "Noto Sans CJK TC"),
        "noto-serif": ("Noto Serif CJK SC", "Noto Serif CJK TC"),
        "wqy-microhei": ("WenQuanYi Micro Hei", "WenQuanYi Micro Hei"),
        "arphic-ming": ("AR PL UMing CN", "AR PL UMing TW"),
    },
}
MORE_TUNE_FONTS = {
    "noto-sans-bold": ("Noto Sans CJK SC Bold", "Noto Sans CJK TC Bold"),
    "noto-serif-bold": ("Noto Serif CJK SC Bold", "Noto Serif CJK TC Bold"),
    "noto-mono": ("Noto Sans Mono CJK SC", "Noto Sans Mono CJK TC"),
    "arphic-kai": ("AR PL UKai CN", "AR PL UKai TW"),
}
LIGHT = [("000000", "ffffff"), ("333333", "ffffff"), ("2e3436", "f6f5f4"), ("555555", "fafafa"),
         ("1a0dab", "ffffff"), ("7a2020", "fff4d6")]
DARK = [("ffffff", "1e1e1e"), ("d4d4d4", "1e1e1e"), ("cccccc", "2b2b2b"), ("eeeeec", "353535"),
        ("9cdcfe", "1e1e1e"), ("ffffff", "3584e4")]
ICON_COLOURS = ["3584e4", "e01b24", "2ec27e", "f5c211"]
PARTICLES = ["的", "了", "和", "在", "是", "我们", "他们", "不", "有", "对", "把", "被", "这个", "那个",
             "可以", "因为", "所以", "但是"]
# Single characters with several traditional forms: the everyday one.
USUAL_TRADITIONAL = {"里": "裡", "后": "後", "发": "發", "个": "個", "几": "幾", "系": "系", "面": "面",
                     "只": "只", "表": "表", "准": "準", "台": "台", "于": "於"}


def colour(text):
    return tuple(int(text[i:i + 2], 16) for i in (0, 2, 4))


def encodable(character, codec, low, high):
    try:
        code = character.encode(codec)
    except UnicodeEncodeError:
        return False
    return len(code) == 2 and low <= code[0] <= high


class Words:
    """Common dictionary words of one half, and the way from simplified to traditional."""

    def __init__(self, path, half):
        self.pairs = []
        self.traditional = {}
        self.unchanged = set()
        with open(path, encoding="utf-8") as lines:
            for line in lines:
                if not line.startswith("#"):
                    self._add(line, half)

    def _add(self, line, half):
        traditional, simplified = line.split(" ")[:2]
        self.traditional.setdefault(simplified, traditional)
        if traditional == simplified and len(simplified) == 1:
            self.unchanged.add(simplified)
        if not 2 <= len(simplified) <= 4 or "variant of" in line or "surname" in line:
            return
        common = (all(encodable(c, "gb2312", 0xB0, 0xD7) for c in simplified)
                  and all(encodable(c, "big5", 0xA4, 0xC6) for c in traditional))
        if common and (zlib.crc32(simplified.encode()) % 2 == 0) == (half == "tune"):
            self.pairs.append((simplified, traditional))

    def to_traditional(self, text):
        out, i = "", 0
        while i < len(text):
            for n in range(min(8, len(text) - i), 0, -1):
                piece = text[i:i + n]
                if n == 1:
                    out += USUAL_TRADITIONAL.get(piece) or (
                        piece if piece in self.unchanged else self.traditional.get(piece, piece))
                elif piece in self.traditional:
                    out += self.traditional[piece]
                else:
                    continue
                i += n
                break
        return out


class Writer:
    """Makes sentences and labels of one half in one script."""

    def __init__(self, words, half):
        self.words = words
        self.sentences = TUNE_SENTENCES if half == "tune" else REPORT_SENTENCES
        self.labels = TUNE_LABELS if half == "tune" else REPORT_LABELS

    def _scripted(self, text, script):
        return self.words.to_traditional(text) if script == "traditional" else text

    def _random_word(self, script):
        return random.choice(self.words.pairs)[1 if script == "traditional" else 0]

    def sentence(self, script):
        if random.random() < 0.45:
            return self._scripted(random.choice(self.sentences), script)
        out = ""
        for _ in range(random.randint(4, 8)):
            out += self._random_word(script)
            dice = random.random()
            if dice < 0.55:
                out += self._scripted(random.choice(PARTICLES), script)
            elif dice < 0.64:
                out += "，"
            elif dice < 0.68:
                out += random.choice([" GPU ", " 2023 ", "(A) ", "Wi-Fi", "37%"])
        return out + random.choice("。。。！？；")

    def label(self, script):
        if random.random() < 0.6:
            return self._scripted(random.choice(self.labels), script)
        return "".join(self._random_word(script) for _ in range(random.randint(1, 3)))


class Screen:
    """One picture and the true boxes of what is written on it."""

    def __init__(self, family, size, antialias):
        self.surface = cairo.ImageSurface(cairo.FORMAT_RGB24, WIDTH, HEIGHT)
        self.context = cairo.Context(self.surface)
        self.family, self.size, self.antialias = family, size, antialias
        self.characters = []
        self.lines = 0

    def set_colour(self, rgb):
        self.context.set_source_rgb(*[c / 255 for c in rgb])

    def layout(self, text):
        layout = PangoCairo.create_layout(self.context)
        options = cairo.FontOptions()
        options.set_hint_style(cairo.HINT_STYLE_SLIGHT)
        if self.antialias == "subpixel":
            options.set_antialias(cairo.ANTIALIAS_SUBPIXEL)
            options.set_subpixel_order(cairo.SUBPIXEL_ORDER_RGB)
        else:
            options.set_antialias(cairo.ANTIALIAS_GRAY)
        PangoCairo.context_set_font_options(layout.get_context(), options)
        description = Pango.FontDescription(self.family)
        description.set_absolute_size(self.size * Pango.SCALE)
        layout.set_font_description(description)
        layout.set_text(text, -1)
        return layout

    def show(self, layout, x, y, text):
        self.context.move_to(x, y)
        PangoCairo.show_layout(self.context, layout)
        self.record(layout, x, y, text)

    def record(self, layout, x, y, text):
        """Keeps [character, ink x, y, width, height, cell x, cell width, line] of each one."""
        data, cursor, unit = text.encode("utf-8"), layout.get_iter(), Pango.SCALE
        while True:
            ink, logical = cursor.get_cluster_extents()
            character = data[cursor.get_index():][:4].decode("utf-8", "ignore")[:1]
            if character and not character.isspace():
                self.characters.append(
                    [character, round(x + ink.x / unit, 2), round(y + ink.y / unit, 2),
                     round(ink.width / unit, 2), round(ink.height / unit, 2),
                     round(x + logical.x / unit, 2), round(logical.width / unit, 2), self.lines])
            line = cursor.get_line_readonly().start_index
            if not cursor.next_cluster():
                break
            if cursor.get_line_readonly().start_index != line:
                self.lines += 1
        self.lines += 1

    def hovers(self, count):
        """[character index, x, y]: random points in the middle half of Chinese characters."""
        chinese = [i for i, c in enumerate(self.characters) if "\u4e00" <= c[0] <= "\u9fff"]
        points = []
        for i in random.sample(chinese, min(count, len(chinese))):
            _, x, y, width, height = self.characters[i][:5]
            tall = height > self.size * 0.4
            points.append([i, round(x + width * random.uniform(0.25, 0.75)),
                           round(y + height * (random.uniform(0.25, 0.75) if tall else 0.5))])
        return points


def photograph():
    """Soft gradients, blobs and noise: what subtitles stand on."""
    y, x = numpy.mgrid[0:HEIGHT, 0:WIDTH].astype(numpy.float32)
    picture = numpy.zeros((HEIGHT, WIDTH, 3), numpy.float32)
    for channel in range(3):
        picture[..., channel] = (random.uniform(30, 150) + random.uniform(-60, 60) * x / WIDTH
                                 + random.uniform(-60, 60) * y / HEIGHT)
    for _ in range(60):
        centre_x, centre_y = random.uniform(0, WIDTH), random.uniform(0, HEIGHT)
        width, height = random.uniform(8, 150), random.uniform(8, 150)
        blob = numpy.exp(-((x - centre_x) / width) ** 2 - ((y - centre_y) / height) ** 2)
        if random.random() < 0.35:
            blob = (blob > 0.5).astype(numpy.float32)
        for channel in range(3):
            picture[..., channel] += random.uniform(-90, 90) * blob
    picture += numpy.random.normal(0, 5, (HEIGHT, WIDTH, 1))
    return numpy.clip(picture, 0, 255).astype(numpy.uint8)


def draw_subtitles(screen, writer, script):
    pixels = numpy.ndarray((HEIGHT, WIDTH, 4), numpy.uint8, screen.surface.get_data())
    pixels[..., :3] = photograph()
    screen.surface.mark_dirty()
    y, size, context = 20, screen.size, screen.context
    while y < HEIGHT - size * 3:
        text = writer.sentence(script)[:int((WIDTH - 100) / size)]
        layout = screen.layout(text)
        width, height = layout.get_pixel_size()
        x = (WIDTH - width) // 2
        context.move_to(x, y)
        PangoCairo.layout_path(context, layout)
        context.set_line_width(max(2, size / 8))
        context.set_line_join(cairo.LINE_JOIN_ROUND)
        screen.set_colour((0, 0, 0))
        context.stroke_preserve()
        screen.set_colour(random.choice([(255, 255, 255), (255, 240, 80)]))
        context.fill()
        screen.record(layout, x, y, text)
        y += height + random.randint(int(size * 0.4), int(size * 3))


def draw_paragraphs(screen, writer, script, ink):
    y = random.randint(8, 30)
    while True:
        x = random.randint(10, 60)
        width = random.randint(600, WIDTH - x - 10)
        text = "".join(writer.sentence(script) for _ in range(random.randint(2, 6)))
        layout = screen.layout(text)
        layout.set_width(width * Pango.SCALE)
        layout.set_wrap(Pango.WrapMode.WORD_CHAR)
        layout.set_line_spacing(random.choice([0, 0, 1.3, 1.6]))
        height = layout.get_pixel_size()[1]
        if y + height > HEIGHT - 4:
            return
        screen.set_colour(ink)
        screen.show(layout, x, y, text)
        y += height + random.randint(6, 30)


def draw_button(screen, x, y, width, height, ink, paper):
    context = screen.context
    bright = sum(paper) < 384
    screen.set_colour(tuple(min(255, int(p * 0.93) + (18 if bright else 0)) for p in paper))
    context.rectangle(x - 8, y - 4, width + 16, height + 8)
    context.fill_preserve()
    screen.set_colour(tuple((i + p) // 2 for i, p in zip(ink, paper)))
    context.set_line_width(1)
    context.stroke()


def draw_icon(screen, x, y, height):
    context, size = screen.context, screen.size
    screen.set_colour(colour(random.choice(ICON_COLOURS)))
    context.new_path()
    if random.random() < 0.5:
        context.arc(x + size / 2, y + height / 2, size / 2, 0, 7)
    else:
        context.rectangle(x, y + height / 2 - size / 2, size, size)
    context.fill()


def draw_labels(screen, writer, script, ink, paper):
    y, framed = 12, random.random() < 0.5
    while y < HEIGHT - screen.size * 2.4:
        x = random.randint(10, 60)
        while True:
            text = writer.label(script)
            layout = screen.layout(text)
            width, height = layout.get_pixel_size()
            if x + width + 30 + screen.size > WIDTH:
                break
            if framed and random.random() < 0.5:
                draw_button(screen, x, y, width, height, ink, paper)
            elif random.random() < 0.25:
                draw_icon(screen, x, y, height)
                x += screen.size + 8
            screen.set_colour(ink)
            screen.show(layout, x, y, text)
            x += width + random.randint(24, 120)
        y += int(screen.size * random.uniform(1.7, 2.8)) + 6


def plan(half):
    """Every screen of a half: kind, script, size, theme, antialiasing, font."""
    fonts = FONTS[half]
    yield from itertools.product(("paragraph", "label"), ("simplified", "traditional"),
                                 (12, 14, 16, 20, 24, 32, 40), ("light", "dark"),
                                 ("grey", "subpixel"), fonts)
    for spec in itertools.product(("subtitle",), ("simplified", "traditional"), (20, 24, 32, 40),
                                  ("photograph",), ("grey",), fonts):
        yield spec
        yield spec


def draw(number, spec, half, writer, out, hovers):
    kind, script, size, theme, antialias, font = spec
    family = FONTS[half][font][1 if script == "traditional" else 0]
    screen = Screen(family, size, antialias)
    if kind == "subtitle":
        draw_subtitles(screen, writer, script)
    else:
        ink, paper = map(colour, random.choice(LIGHT if theme == "light" else DARK))
        screen.set_colour(paper)
        screen.context.paint()
        if kind == "paragraph":
            draw_paragraphs(screen, writer, script, ink)
        else:
            draw_labels(screen, writer, script, ink, paper)
    screen.surface.flush()
    name = f"{number:04d}.png"
    screen.surface.write_to_png(os.path.join(out, name))
    return {"image": name, "kind": kind, "script": script, "size": size, "theme": theme,
            "antialias": antialias, "font": font, "characters": screen.characters,
            "hovers": screen.hovers(hovers)}


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--cedict", required=True, help="the word list that words are taken from")
    parser.add_argument("--out", required=True, help="folder for the pictures and index.json")
    parser.add_argument("--half", choices=("tune", "report"), required=True)
    parser.add_argument("--screens", type=int, default=0, help="draw only a spread of this many")
    parser.add_argument("--hovers", type=int, default=HOVERS_PER_SCREEN, help="on each screen")
    parser.add_argument("--seed", type=int, help="of other screens of the tuned half")
    parser.add_argument("--more-fonts", action="store_true", help="for the tuned half")
    options = parser.parse_args()
    if options.half != "tune" and (options.seed is not None or options.more_fonts):
        parser.error("the reported half is always the same")
    if options.more_fonts:
        FONTS["tune"].update(MORE_TUNE_FONTS)
    seed = SEEDS[options.half] if options.seed is None else options.seed
    random.seed(seed)
    numpy.random.seed(seed)
    os.makedirs(options.out, exist_ok=True)
    writer = Writer(Words(options.cedict, options.half), options.half)
    specs = list(plan(options.half))
    if options.screens and options.screens < len(specs):
        specs = random.sample(specs, options.screens)
    index = [draw(n, spec, options.half, writer, options.out, options.hovers) for n, spec in enumerate(specs)]
    with open(os.path.join(options.out, "index.json"), "w", encoding="utf-8") as file:
        json.dump(index, file, ensure_ascii=False)
    print(f"{len(index)} screens, {sum(len(s['characters']) for s in index)} characters")


if __name__ == "__main__":
    main()
