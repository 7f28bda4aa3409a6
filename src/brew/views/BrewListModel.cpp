#include "brew/views/BrewListModel.h"

#include <QStringList>
#include <QToolTip>
#include <algorithm>

#include "brew/views/BrewPackageRow.h"
#include "controls/ToolTipText.h"

namespace zolt {

namespace {

// Compared by id: a package that was loaded again counts as new.
bool showSame(const BrewSection& one, const BrewSection& other) {
  return one.header == other.header && one.type == other.type &&
         std::ranges::equal(one.packages, other.packages, {}, &BrewPackage::id, &BrewPackage::id);
}

QString toolTipOf(const BrewPackage& package) {
  QStringList lines{package.name};
  if (package.description) lines << *package.description;
  if (package.installedVersion) lines << *package.installedVersion;
  return toolTipText(lines, QToolTip::font());
}

}  // namespace

bool BrewListModel::setSections(std::vector<BrewSection> sections) {
  if (std::ranges::equal(sections, m_sections, showSame)) return false;
  beginResetModel();
  m_sections = std::move(sections);
  m_rows.clear();
  for (std::size_t section = 0; section < m_sections.size(); ++section) {
    const int index = static_cast<int>(section);
    m_rows.push_back({.section = index, .package = -1});
    for (int package = 0; package < std::ssize(m_sections[section].packages); ++package) {
      m_rows.push_back({.section = index, .package = package});
    }
  }
  endResetModel();
  return true;
}

int BrewListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

const BrewPackage* BrewListModel::packageAt(int row) const {
  const Row& at = m_rows.at(static_cast<std::size_t>(row));
  if (at.package < 0) return nullptr;
  return &m_sections[static_cast<std::size_t>(at.section)].packages[static_cast<std::size_t>(at.package)];
}

BrewPackageType BrewListModel::typeAt(int row) const {
  const Row& at = m_rows.at(static_cast<std::size_t>(row));
  return m_sections[static_cast<std::size_t>(at.section)].type.value_or(packageAt(row)->type);
}

QString BrewListModel::headerAt(int row) const {
  const Row& at = m_rows.at(static_cast<std::size_t>(row));
  return at.package < 0 ? m_sections[static_cast<std::size_t>(at.section)].header : QString();
}

QVariant BrewListModel::data(const QModelIndex& index, int role) const {
  const BrewPackage* package = packageAt(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return package == nullptr ? headerAt(index.row()) : package->name;
    case Qt::ToolTipRole:
      return package == nullptr ? QVariant() : toolTipOf(*package);
    case Qt::AccessibleDescriptionRole:
      if (package == nullptr) return {};
      return typeAt(index.row()) == BrewPackageType::Cask ? QStringLiteral("Cask") : QStringLiteral("Formula");
    case Qt::AccessibleTextRole:
      return package == nullptr ? headerAt(index.row())
                                : BrewPackageRow{.package = *package, .type = typeAt(index.row())}.spokenText();
    default:
      return {};
  }
}

Qt::ItemFlags BrewListModel::flags(const QModelIndex& index) const {
  return packageAt(index.row()) == nullptr ? Qt::NoItemFlags : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

}  // namespace zolt
