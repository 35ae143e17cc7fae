#pragma once

#include <QStringList>

class QWidget;

/// Returns the texts of the labels and buttons in a window that have less space than they need or
/// extend beyond their parent. Empty if all are readable. Ignores labels that end with "…" by
/// design, and scrolled content.
QStringList cutTexts(QWidget* window);
