#include <sys/stat.h>
#include <unistd.h>

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <array>
#include <filesystem>
#include <system_error>

#include "platform/ReplacementFile.h"
#include "session/ShellIntegration.h"

// A static library's resources are linked in only when somebody asks for them; the macro wants no namespace around it.
static void loadScripts() {
  Q_INIT_RESOURCE(integration);
}

namespace zolt {

namespace {

constexpr std::array kFiles = {"zolt.bash", ".zshenv", "fish/vendor_conf.d/zolt.fish"};

QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray script(const char* name) {
  return contentOf(QStringLiteral(":/shell-integration/") + QLatin1String(name));
}

std::string folderName() {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  for (const char* name : kFiles)
    hash.addData(script(name));
  constexpr int kDigits = 16;
  return "shell-integration-" + hash.result().toHex().first(kDigits).toStdString();
}

// What shells execute, nobody else may write.
bool makePrivateFolder(const std::string& path) {
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
  if (mkdir(path.c_str(), S_IRWXU) == 0) return true;
  struct stat facts {};
  return lstat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == geteuid() &&
         chmod(path.c_str(), S_IRWXU) == 0;
}

bool install(const QByteArray& content, const std::string& path) {
  if (contentOf(QFile::decodeName(path.c_str())) == content) return true;
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
  ReplacementFile file(path);
  file.write({content.constData(), static_cast<std::size_t>(content.size())});
  file.replace();
  return file.error() == 0;
}

}  // namespace

std::string installShellIntegration(const std::string& parent) {
  if (parent.empty()) return {};
  loadScripts();
  const std::string folder = parent + "/" + folderName();
  if (!makePrivateFolder(folder)) return {};
  for (const char* name : kFiles) {
    if (!install(script(name), folder + "/" + name)) return {};
  }
  return folder;
}

}  // namespace zolt
