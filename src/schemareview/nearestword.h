#pragma once

#include <QStringList>

/// Returns the word that a misspelt one was probably meant to be: the one among `candidates` that the
/// fewest slips (a letter too many, missing, wrong, or swapped with the next one) turn into `word`, in
/// upper or lower case. Empty when none is near, which takes one slip at most, and one more for every
/// three letters from the sixth on.
QString nearestWord(const QString& word, const QStringList& candidates);
