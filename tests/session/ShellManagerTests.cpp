#include "session/ShellManager.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zolt {
namespace {

const std::set<std::string> kSystemShells{"/bin/zsh", "/bin/bash", "/bin/sh"};
const std::set<std::string> kEverything{
    "/bin/zsh",         "/bin/bash", "/usr/local/bin/fish", "/opt/homebrew/bin/fish", "/opt/homebrew/bin/nu",
    "/usr/local/bin/nu"};

// A machine: what is installed, and its variable SHELL.
struct Machine {
  std::set<std::string> installed;
  std::optional<std::string> login;
};

class Catalogue {
 public:
  explicit Catalogue(const Machine& machine)
      : m_manager(machine.login ? Environment{{"SHELL", *machine.login}} : Environment{},
                  [&machine](const std::string& path) { return machine.installed.contains(path); }) {}

  const ShellManager* operator->() const { return &m_manager; }

  std::string names() const {
    std::string text;
    for (const Shell& shell : m_manager.availableShells()) {
      text += (&shell == m_manager.availableShells().data() ? "" : " ") + shell.name;
    }
    return text;
  }
  const Shell& shell(std::size_t index) const { return m_manager.availableShells().at(index); }

 private:
  ShellManager m_manager;
};

TEST(ShellManager, ListsTheSystemShellsWithTheLoginShellAsDefault) {
  const Catalogue catalogue({.installed = kSystemShells, .login = "/bin/zsh"});
  EXPECT_EQ(catalogue.names(), "Zsh Bash Sh");
  EXPECT_EQ(catalogue->defaultShell(), catalogue.shell(0));
  EXPECT_EQ(catalogue->defaultShell(), Shell::zsh());
}

TEST(ShellManager, ListsEveryNameOnceInTheOrderOfTheCandidates) {
  const Catalogue catalogue({.installed = kEverything, .login = {}});
  EXPECT_EQ(catalogue.names(), "Zsh Bash Fish Nushell Sh");
  EXPECT_EQ(catalogue.shell(2).icon, "fish");
  EXPECT_EQ(catalogue.shell(3).icon, "n.circle");
  for (const Shell& shell : catalogue->availableShells()) {
    EXPECT_TRUE(shell.args.empty()) << shell.name;
  }
}

TEST(ShellManager, TriesTheTwoPlacesOfFishAndNushellInOppositeOrders) {
  const Catalogue catalogue({.installed = kEverything, .login = {}});
  EXPECT_EQ(catalogue.shell(2).executable, "/usr/local/bin/fish");
  EXPECT_EQ(catalogue.shell(3).executable, "/opt/homebrew/bin/nu");
}

TEST(ShellManager, TakesTheOtherPlaceWhereTheFirstHasNone) {
  const Catalogue catalogue({.installed = {"/opt/homebrew/bin/fish", "/usr/local/bin/nu"}, .login = {}});
  EXPECT_EQ(catalogue.names(), "Fish Nushell Sh");
  EXPECT_EQ(catalogue.shell(0), Shell::fish());
  EXPECT_EQ(catalogue.shell(1).executable, "/usr/local/bin/nu");
}

TEST(ShellManager, PutsALoginShellThatItDroppedByNameInFrontUnderTheSameName) {
  const Catalogue catalogue({.installed = kEverything, .login = "/opt/homebrew/bin/fish"});
  EXPECT_EQ(catalogue.names(), "Fish Zsh Bash Fish Nushell Sh");
  EXPECT_EQ(catalogue.shell(0).executable, "/opt/homebrew/bin/fish");
  EXPECT_EQ(catalogue.shell(0).icon, "terminal");
  EXPECT_EQ(catalogue.shell(3).executable, "/usr/local/bin/fish");
  EXPECT_EQ(catalogue->defaultShell(), catalogue.shell(0));
}

TEST(ShellManager, InsertsNothingForShAsTheLoginShell) {
  const Catalogue catalogue({.installed = kSystemShells, .login = "/bin/sh"});
  EXPECT_EQ(catalogue.names(), "Zsh Bash Sh");
  EXPECT_EQ(catalogue->defaultShell(), Shell::sh());
}

TEST(ShellManager, KeepsZshAsDefaultWithoutALoginShell) {
  const Catalogue catalogue({.installed = kSystemShells, .login = {}});
  EXPECT_EQ(catalogue.names(), "Zsh Bash Sh");
  EXPECT_EQ(catalogue->defaultShell(), Shell::zsh());
}

TEST(ShellManager, KeepsZshAsDefaultAlsoWhereItIsNotInstalled) {
  const Catalogue catalogue({.installed = {}, .login = {}});
  EXPECT_EQ(catalogue.names(), "Sh");
  EXPECT_EQ(catalogue->defaultShell(), Shell::zsh());
}

TEST(ShellManager, ComparesTheLoginShellAsTextWithoutNormalisingThePath) {
  const Catalogue catalogue({.installed = kSystemShells, .login = "/bin//zsh"});
  EXPECT_EQ(catalogue.names(), "Zsh Zsh Bash Sh");
  EXPECT_EQ(catalogue->defaultShell(), catalogue.shell(0));
  EXPECT_EQ(catalogue->defaultShell().executable, "/bin//zsh");
  EXPECT_EQ(catalogue->defaultShell().icon, "terminal");
}

TEST(ShellManager, OffersShUnprobedAndALoginShellUnprobed) {
  const Catalogue catalogue({.installed = {}, .login = "/nonexistent/tcsh"});
  EXPECT_EQ(catalogue.names(), "Tcsh Sh");
  EXPECT_EQ(catalogue->defaultShell().executable, "/nonexistent/tcsh");
  EXPECT_TRUE(catalogue->defaultShell().args.empty());
}

TEST(ShellManager, TakesAnEmptyLoginShellForOneThatIsSet) {
  const Catalogue catalogue({.installed = kSystemShells, .login = ""});
  EXPECT_EQ(catalogue.names(), " Zsh Bash Sh");
  EXPECT_EQ(catalogue.shell(0).name, "");
  EXPECT_EQ(catalogue.shell(0).executable, "");
  EXPECT_EQ(catalogue.shell(0).icon, "terminal");
  EXPECT_EQ(catalogue->defaultShell(), catalogue.shell(0));
}

TEST(ShellManager, CapitalisesTheLastComponentOfTheLoginShell) {
  const auto nameFor = [](const std::string& login) {
    return Catalogue({.installed = {}, .login = login}).shell(0).name;
  };
  EXPECT_EQ(nameFor("/usr/local/bin/bash"), "Bash");
  EXPECT_EQ(nameFor("/opt/local/bin/tcsh"), "Tcsh");
  EXPECT_EQ(nameFor("/opt/bin/OSH"), "Osh");
  EXPECT_EQ(nameFor("/opt/bin/my shell"), "My Shell");
  EXPECT_EQ(nameFor("/opt/bin/\xC3\xA9sh"), "\xC3\x89sh");
  EXPECT_EQ(nameFor("/opt/bin/fish/"), "Fish");
  EXPECT_EQ(nameFor("ksh"), "Ksh");
  EXPECT_EQ(nameFor("/"), "/");
  EXPECT_EQ(nameFor(""), "");
}

TEST(ShellManager, GivesFreshEntriesAnIdOfTheirOwnInEachCatalogue) {
  const Machine machine{.installed = kEverything, .login = "/opt/local/bin/tcsh"};
  const Catalogue one(machine);
  const Catalogue other(machine);
  EXPECT_NE(one.shell(0).id, other.shell(0).id);
  EXPECT_NE(one.shell(3).id, other.shell(3).id);
  EXPECT_EQ(one.shell(1).id, other.shell(1).id) << "the shared entry for Zsh is one and the same in a process";
}

TEST(ShellManager, ProbesEachCandidateOfANewNameInOrder) {
  std::vector<std::string> probed;
  const ShellManager manager({}, [&](const std::string& path) {
    probed.push_back(path);
    return path == "/usr/local/bin/fish";
  });
  EXPECT_EQ(probed, (std::vector<std::string>{"/bin/zsh", "/bin/bash", "/usr/local/bin/fish", "/opt/homebrew/bin/nu",
                                              "/usr/local/bin/nu"}));
}

TEST(ShellManager, SummarisesOneLineAShellWithAMarkOnTheDefault) {
  const Catalogue catalogue({.installed = kSystemShells, .login = "/bin/bash"});
  EXPECT_EQ(catalogue->summary(), "Zsh  /bin/zsh\nBash  /bin/bash  (default)\nSh  /bin/sh\n");
}

TEST(ShellManager, MakesTheSameShellWithAFreshId) {
  Shell made = ShellManager::makeShell(Shell::bash());
  EXPECT_NE(made.id, Shell::bash().id);
  made.id = Shell::bash().id;
  EXPECT_EQ(made, Shell::bash());
}

TEST(ShellManager, SharesOneCatalogueOfThisMachine) {
  EXPECT_EQ(&ShellManager::shared(), &ShellManager::shared());
  EXPECT_FALSE(ShellManager::shared().availableShells().empty());
}

}  // namespace
}  // namespace zolt
