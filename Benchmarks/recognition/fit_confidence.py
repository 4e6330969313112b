#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Fits what speaks for a character and how certain it is, and prints the constants for the program.

    benchmark_recognition TUNE_CORPUS CEDICT --characters > known.tsv
    fit_confidence.py known.tsv [more.tsv ...]

The data should come from several runs, some with fonts of the corpus hidden from the program (by
FONTCONFIG_FILE), so that strange fonts are judged too. First the choice between the options of a
place is fitted, by a conditional logit model (OptionSupport.cpp); then, with the choice that this
makes, whether it is right, by a logistic regression (CharacterCertainty.cpp). Both are fitted by
Newton's method with a small ridge penalty.
"""
import sys

import numpy

SUPPORTS = ["exact", "exactOverNoise", "shape", "read", "readInStrangeFont", "vote", "wordOfTwo",
            "wordOfThree", "longerWord"]
CERTAINTIES = ["constant", "share", "exact", "fontFit", "agreed", "withinWord", "beyondFit"]
RIDGE = 0.02
KNOWN_FONT, LEAST_NOISE, USUAL_NOISE, GREATEST_SHARE = 0.85, 0.03, 0.1, 7


def places(paths):
    """The truth, the font's fit and the options of each place."""
    for path in paths:
        with open(path, encoding="utf-8") as lines:
            for line in lines:
                field = line.rstrip("\n").split("\t")
                if field[0] != "@" or field[1] == "kind" or len(field) < 7:
                    continue
                options = [option.split(" ") for option in field[6:]]
                characters = [option[0] for option in options]
                yield field[4], float(field[5]), characters, numpy.array(
                    [[float(value) for value in option[1:]] for option in options])


def supports(fit, options):
    exact, shape, read, votes, word = options.T
    noise = LEAST_NOISE + max(0, 1 - fit)
    return numpy.stack([exact, exact * USUAL_NOISE / noise, shape, read,
                        read * (fit < KNOWN_FONT), votes, word == 2, word == 3, word >= 4], 1)


def fit_choice(data):
    weights = numpy.zeros(len(SUPPORTS))
    cases = [(supports(fit, options), characters.index(truth))
             for truth, fit, characters, options in data
             if truth in characters and len(characters) > 1]
    for _ in range(60):
        gradient, hessian = -RIDGE * weights, RIDGE * numpy.eye(len(weights))
        for x, right in cases:
            p = numpy.exp(x @ weights - (x @ weights).max())
            p /= p.sum()
            mean = p @ x
            gradient += x[right] - mean
            hessian += (x * p[:, None]).T @ x - numpy.outer(mean, mean)
        step = numpy.linalg.solve(hessian, gradient)
        weights += step * min(1, 3 / numpy.abs(step).max())
    return weights


def certainty_features(weights, fit, options):
    support = supports(fit, options) @ weights
    best = int(support.argmax())
    others = numpy.exp(numpy.delete(support, best) - support[best]).sum()
    share = min(GREATEST_SHARE, -numpy.log(max(others, 1e-9)))
    exact, _, read, _, word = options[best]
    return best, [1, share, exact, fit, read > 0, word > 0, max(0.0, fit - exact)]


def fit_certainty(x, y):
    weights = numpy.zeros(x.shape[1])
    penalty = RIDGE * numpy.eye(x.shape[1])
    penalty[0, 0] = 0
    for _ in range(60):
        p = 1 / (1 + numpy.exp(-x @ weights))
        gradient = x.T @ (y - p) - penalty @ weights
        hessian = (x * (p * (1 - p))[:, None]).T @ x + penalty
        weights += numpy.linalg.solve(hessian, gradient)
    return weights


def show(names, weights):
    for name, weight in zip(names, weights):
        print(f"{name:18} {weight:8.3f}")


def main():
    data = list(places(sys.argv[1:]))
    choice = fit_choice(data)
    show(SUPPORTS, choice)
    rows, right = [], []
    for truth, fit, characters, options in data:
        best, features = certainty_features(choice, fit, options)
        rows.append(features)
        right.append(characters[best] == truth)
    x, y = numpy.array(rows, float), numpy.array(right, float)
    weights = fit_certainty(x, y)
    p = 1 / (1 + numpy.exp(-x @ weights))
    print(f"\n{len(y)} characters, {int((1 - y).sum())} wrong")
    show(CERTAINTIES, weights)
    for limit in (0.3, 0.5, 0.7, 0.8, 0.9, 0.95, 0.97, 0.98, 0.99, 0.995):
        above = p >= limit
        print(f"p >= {limit:<5}  {100 * above.mean():6.2f} % of them, "
              f"{100 * y[above].mean():6.2f} % right; below {int((1 - y[~above]).sum())} wrong, "
              f"{int(y[~above].sum())} right")


if __name__ == "__main__":
    main()
