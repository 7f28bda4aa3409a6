// Searches with the process's shared manager and prints the results: searchshared QUERY
#include <QCoreApplication>
#include <cstdio>

#include "brew/BrewManager.h"
#include "support/WaitFor.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: searchshared QUERY\n", stderr);
    return 2;
  }
  QCoreApplication application(argc, argv);
  zolt::BrewManager& manager = zolt::BrewManager::shared();
  if (manager.status() == QStringLiteral("Homebrew not found")) {
    std::puts("none");
    return 0;
  }
  manager.search(QString::fromUtf8(argv[1]));
  const bool found = zolt::test::waitFor([&] { return !manager.searchResults().empty(); });
  for (const zolt::BrewPackage& package : manager.searchResults()) {
    std::puts(qUtf8Printable(package.name));
  }
  return found ? 0 : 1;
}
