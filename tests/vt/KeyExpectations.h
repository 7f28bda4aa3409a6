#pragma once

#include <span>
#include <string>

#include "vt/input/Key.h"

namespace zolt::vt {

/// What a key sends, as documented. "Control" is the key with Control.
struct KeyExpectation {
  Key key;
  std::string legacy;
  std::string applicationCursor;  ///< DECCKM
  std::string legacyControl;
  std::string disambiguated;  ///< flag 1
  std::string every;          ///< flag 8
  std::string everyControl;
};

/// Every key but Key::Character.
std::span<const KeyExpectation> keyExpectations();

}  // namespace zolt::vt
