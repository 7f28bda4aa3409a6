// A process that runs brew commands and is ended in various ways: brewhost TOOL COMMAND [NAME], where COMMAND is
// refresh, search, info, install, upgrade or upgradeAll. SIGTERM makes it quit in an orderly way.
#include <QCoreApplication>
#include <cstdio>
#include <map>
#include <string>

#include "brew/BrewCommand.h"
#include "brew/BrewManager.h"
#include "platform/TerminationSignals.h"

namespace {

using zolt::BrewManager;

zolt::BrewPackage package(const QString& name) {
  return zolt::makeBrewPackage(name, std::nullopt, std::nullopt, zolt::BrewPackageType::Formula);
}

const std::map<std::string, void (*)(BrewManager& manager, const QString& name)> kCommands{
    {"refresh", [](BrewManager&, const QString&) {}},  // a new manager's first step
    {"search", [](BrewManager& manager, const QString& name) { manager.search(name); }},
    {"info",
     [](BrewManager& manager, const QString& name) {
       manager.runBrewCommand({QStringLiteral("info"), name}, [](auto&&) {});
     }},
    {"install", [](BrewManager& manager, const QString& name) { manager.install(package(name)); }},
    {"upgrade", [](BrewManager& manager, const QString& name) { manager.upgrade(package(name)); }},
    {"upgradeAll", [](BrewManager& manager, const QString&) { manager.upgradeAll(); }},
};

}  // namespace

int main(int argc, char** argv) {
  const auto command = kCommands.find(argc >= 3 ? argv[2] : "");
  if (command == kCommands.end()) {
    std::fputs("usage: brewhost TOOL COMMAND [NAME]\n", stderr);
    return 2;
  }
  QCoreApplication application(argc, argv);
  const zolt::TerminationSignals signals([] { QCoreApplication::quit(); });
  QObject::connect(&application, &QCoreApplication::aboutToQuit, &application, &zolt::endBrewCommands);
  // Never destroyed, as in Zolt itself.
  auto* queue = new zolt::WorkerQueue(zolt::WorkerQueue::utilityThreads);
  auto* manager = new BrewManager({argv[1]}, *queue);
  command->second(*manager, QString::fromUtf8(argc > 3 ? argv[3] : ""));
  return QCoreApplication::exec();
}
