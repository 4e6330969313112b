#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Fits how certain a character is, and prints the constants for the program.

    benchmark_recognition TUNE_CORPUS CEDICT --characters > known.tsv
    fit_confidence.py known.tsv [more.tsv ...]

The data should come from several runs, some with fonts of the corpus hidden from the program (by
FONTCONFIG_FILE), so that strange fonts are judged too. The model is a logistic regression with a
small ridge penalty, fitted by Newton's method (iteratively reweighted least squares).
"""
import sys

import numpy

NAMES = ["constant", "reader", "exact", "margin", "fontFit", "agreed", "inWord", "beyondFit"]
RIDGE = 0.02


def rows(paths):
    for path in paths:
        with open(path, encoding="utf-8") as lines:
            for line in lines:
                field = line.rstrip("\n").split("\t")
                if field[0] != "@" or field[1] == "kind":
                    continue
                reader, exact, margin, _, fit = map(float, field[6:11])
                agreed, in_word, right = map(int, field[11:14])
                yield features(reader, exact, margin, fit, agreed, in_word), right


def features(reader, exact, margin, fit, agreed, in_word):
    return [1, reader, exact, min(margin, 0.3), fit, agreed, in_word, max(0.0, fit - exact)]


def fit(x, y):
    weights = numpy.zeros(x.shape[1])
    penalty = RIDGE * numpy.eye(x.shape[1])
    penalty[0, 0] = 0
    for _ in range(60):
        p = 1 / (1 + numpy.exp(-x @ weights))
        gradient = x.T @ (y - p) - penalty @ weights
        hessian = (x * (p * (1 - p))[:, None]).T @ x + penalty
        weights += numpy.linalg.solve(hessian, gradient)
    return weights


def main():
    data = list(rows(sys.argv[1:]))
    x = numpy.array([row[0] for row in data], float)
    y = numpy.array([row[1] for row in data], float)
    weights = fit(x, y)
    p = 1 / (1 + numpy.exp(-x @ weights))
    print(f"{len(y)} characters, {int((1 - y).sum())} wrong")
    for name, weight in zip(NAMES, weights):
        print(f"{name:10} {weight:8.3f}")
    for limit in (0.3, 0.5, 0.7, 0.8, 0.9, 0.95, 0.97, 0.98, 0.99, 0.995):
        above = p >= limit
        print(f"p >= {limit:<5}  {100 * above.mean():6.2f} % of them, "
              f"{100 * y[above].mean():6.2f} % right; below {int((1 - y[~above]).sum())} wrong, "
              f"{int(y[~above].sum())} right")


if __name__ == "__main__":
    main()
