#pragma once

#include <QStringList>

/// Returns the word that a misspelt one was probably meant to be: the candidate that the fewest slips (a
/// letter too many, missing, wrong, or swapped with the next one) turn into `word`, ignoring case. Returns
/// nothing if that takes more than one slip, or one more for every three letters from the sixth on.
QString nearestWord(const QString& word, const QStringList& candidates);
