#pragma once

#include "../popups.h"

#include <QColor>
#include <QPixmap>

namespace bench {

/// Readable on light and on dark.
QColor toneColor(PopupKind::Tone tone);

/// A sign for @p tone that does not rely on its colour, @p size pixels wide on a screen of the
/// given ratio.
QPixmap toneSign(PopupKind::Tone tone, int size, qreal devicePixelRatio);

/// @p text as a sentence of its own begins.
QString capitalized(const QString &text);

} // namespace bench
