#pragma once

#include <QAbstractListModel>
#include <optional>
#include <utility>
#include <vector>

#include "brew/BrewPackage.h"

namespace zolt {

/// A list section: a header and the packages below it.
struct BrewSection {
  QString header;
  std::vector<BrewPackage> packages;
  std::optional<BrewPackageType> type;  ///< of all its rows; each package's own if absent
};

/// The rows of the sidebar's list, including headers. Replaced as a whole: a reload brings new packages.
class BrewListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  /// False, without any change, if exactly these packages are already shown.
  bool setSections(std::vector<BrewSection> sections);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  /// The package of a row and the type that its icon shows; none for a header.
  const BrewPackage* packageAt(int row) const;
  BrewPackageType typeAt(int row) const;
  /// The header's text; empty for a package.
  QString headerAt(int row) const;

 private:
  // The section and the package in it; -1 for its header.
  struct Row {
    int section;
    int package;
  };

  std::vector<BrewSection> m_sections;
  std::vector<Row> m_rows;
};

}  // namespace zolt
