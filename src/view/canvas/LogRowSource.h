#pragma once

#include "history/RowIndex.h"
#include "history/TextStorage.h"
#include "view/canvas/RowSource.h"

namespace zolt {

/// Shows a text storage: the rows of the log display.
class LogRowSource : public RowSource {
 public:
  /// `storage` must outlive the source.
  explicit LogRowSource(const TextStorage& storage);

  void sync() override { m_index.sync(); }
  int columns() const override { return static_cast<int>(m_index.columns()); }
  void setColumns(int columns) override { m_index.setColumns(columns); }
  CanvasRow rowCount() const override { return m_index.rowCount(); }
  std::uint64_t generation() const override { return m_index.generation(); }
  bool refine() override;

  RowContent content(CanvasRow row) override;
  CanvasRange rowRange(CanvasRow row) override;
  CanvasRow rowAt(CanvasPosition position) override { return m_index.rowAt(position); }
  CanvasRow roughRowAt(CanvasPosition position) const override { return m_index.roughRowAt(position); }
  CanvasPosition positionAt(CanvasRow row, CanvasColumn column) override;
  CanvasColumn columnAt(CanvasRow row, CanvasPosition position) override;

  CanvasPosition size() const override { return m_storage.size(); }
  std::string text(CanvasRange range) const override;
  CanvasRange wordAt(CanvasPosition position) const override;
  CanvasRange lineAt(CanvasPosition position) const override;

 private:
  const TextStorage& m_storage;
  RowIndex m_index;
};

}  // namespace zolt
