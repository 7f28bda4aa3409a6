#include "app/MessageIdentity.h"

#include <QRandomGenerator>
#include <utility>

namespace zolt {

namespace {

// From the system's generator, which is fit for secrets.
std::string randomDigits(int words) {
  QByteArray bytes;
  for (int i = 0; i < words; ++i) {
    const quint32 word = QRandomGenerator::system()->generate();
    bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
  }
  return bytes.toHex().toStdString();
}

}  // namespace

MessageIdentity::MessageIdentity(QObject& owner, std::string id) : QObject(&owner), m_id(std::move(id)) {}

std::string MessageIdentity::newId() {
  return randomDigits(2);
}

void MessageIdentity::give(QObject& owner, const std::string& id) {
  new MessageIdentity(owner, id);
}

MessageIdentity& MessageIdentity::of(QObject& owner) {
  auto* known = owner.findChild<MessageIdentity*>(QString(), Qt::FindDirectChildrenOnly);
  return known != nullptr ? *known : *new MessageIdentity(owner, newId());
}

const std::string& MessageIdentity::makeToken() {
  m_token = randomDigits(4);
  return m_token;
}

}  // namespace zolt
