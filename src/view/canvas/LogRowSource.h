#pragma once

#include "history/RowIndex.h"
#include "history/TextStorage.h"
#include "view/canvas/RowSource.h"

namespace zolt {

/// Shows a text storage: the rows of the log display. A byte of the storage is a character of the canvas.
class LogRowSource : public RowSource {
 public:
  /// `storage` must outlive the source.
  explicit LogRowSource(const TextStorage& storage);

  static constexpr CanvasPosition toCanvas(TextPosition position) { return CanvasPosition(position); }
  static constexpr CanvasRange toCanvas(TextPosition begin, TextPosition end) {
    return {.begin = toCanvas(begin), .end = toCanvas(end)};
  }
  static constexpr TextPosition toText(CanvasPosition position) { return position.value; }

  void sync() override { m_index.sync(); }
  int columns() const override { return static_cast<int>(m_index.columns()); }
  void setColumns(int columns) override { m_index.setColumns(columns); }
  std::int64_t rowCount() const override { return m_index.rowCount(); }
  std::uint64_t generation() const override { return m_index.generation(); }
  bool refine() override;

  RowContent content(CanvasRow row) override;
  CanvasRange rowRange(CanvasRow row) override;
  CanvasRow rowAt(CanvasPosition position) override { return CanvasRow(m_index.rowAt(toText(position))); }
  CanvasRow roughRowAt(CanvasPosition position) const override {
    return CanvasRow(m_index.roughRowAt(toText(position)));
  }
  CanvasPosition positionAt(CanvasRow row, CanvasColumn column) override;
  CanvasColumn columnAt(CanvasRow row, CanvasPosition position) override;

  CanvasPosition end() const override { return toCanvas(m_storage.size()); }
  std::string text(CanvasRange range) const override;
  CanvasRange wordAt(CanvasPosition position) const override;
  CanvasRange lineAt(CanvasPosition position) const override;

 private:
  const TextStorage& m_storage;
  RowIndex m_index;
};

}  // namespace zolt
