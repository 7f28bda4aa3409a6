#include "platform/StoredString.h"

#include <utility>

namespace zolt {

StoredString::StoredString(UserDefaults& defaults, std::string key, std::string absent, QObject* parent)
    : QObject(parent), m_defaults(defaults), m_key(std::move(key)), m_absent(std::move(absent)) {
  connect(&m_defaults, &UserDefaults::changed, this, [this](const std::string& changedKey) {
    if (changedKey == m_key) Q_EMIT changed();
  });
}

}  // namespace zolt
