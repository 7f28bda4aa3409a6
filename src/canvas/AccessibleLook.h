#pragma once

#include <QString>

#include "canvas/CanvasStyle.h"
#include "canvas/RowContent.h"

namespace zolt {

/// Text of one look in a row.
struct LookRun {
  CellLook look;
  ColumnRange columns;
};

/// The look at `column` and how far it reaches to both sides; `plain` where there is no text.
LookRun lookRunAt(const RowContent& row, CanvasColumn column, const CellLook& plain);

/// A look as text attributes of IAccessible2: `name:value` pairs, each followed by a semicolon. Only what differs from
/// regular, upright text without lines is named, and always both colours.
QString accessibleAttributes(const CellLook& look, const CanvasColors& colors);

}  // namespace zolt
