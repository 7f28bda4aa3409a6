#pragma once

#include <QColor>
#include <QIcon>
#include <QString>
#include <QStringList>

namespace zolt {

/// The drawing called `name` as an icon of any size and pixel ratio.
///
/// Without a colour it is drawn in the application palette's text colour of the moment it is painted, so it follows a
/// change of theme by itself; with one, always in that. Where it is disabled, it is drawn fainter. A name may come from
/// data (a shell names its icon): an unknown one gives a null icon. Main thread.
QIcon symbol(const QString& name, const QColor& color = {});

/// The name of every drawing, in alphabetical order.
QStringList symbolNames();

}  // namespace zolt
