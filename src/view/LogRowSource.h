#pragma once

#include "canvas/RowSource.h"
#include "history/RowIndex.h"
#include "history/TextStorage.h"

namespace zolt {

/// Shows a text storage: the rows of the log display. A byte of the storage is a character of the canvas.
class LogRowSource : public RowSource {
 public:
  /// `storage` must outlive the source.
  explicit LogRowSource(const TextStorage& storage);

  void sync() override { m_index.sync(); }
  int columns() const override { return static_cast<int>(m_index.columns()); }
  void setColumns(int columns) override { m_index.setColumns(columns); }
  std::int64_t rowCount() const override { return m_index.rowCount(); }
  std::uint64_t generation() const override { return m_index.generation(); }
  bool refine() override;

  std::shared_ptr<const RowContent> content(CanvasRow row) override;
  TextRange rowRange(CanvasRow row) override;
  CanvasRow rowAt(TextPosition position) override { return CanvasRow(m_index.rowAt(position)); }
  CanvasRow roughRowAt(TextPosition position) const override { return CanvasRow(m_index.roughRowAt(position)); }

  TextPosition end() const override { return m_storage.end(); }
  std::string text(TextRange range) const override;
  TextRange wordAt(TextPosition position) const override;
  TextRange lineAt(TextPosition position) const override;
  TextPosition characterBefore(TextPosition position) const override { return position.backBy(1); }

 private:
  const TextStorage& m_storage;
  RowIndex m_index;
};

}  // namespace zolt
