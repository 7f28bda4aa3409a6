#pragma once

#include <QColor>
#include <QIcon>
#include <QString>
#include <QStringList>

namespace zolt {

/// The drawing `name` as an icon, for any size and device pixel ratio.
///
/// Without a colour it is painted in the application palette's current text colour, and so follows theme changes. In
/// disabled mode it is fainter. Names may come from data (a shell names its icon): an unknown one gives a null icon.
/// Main thread.
QIcon symbol(const QString& name, const QColor& color = {});

/// The names of all drawings, sorted.
QStringList symbolNames();

}  // namespace zolt
