// The ways in which containers differ.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace container {

enum class Keys {
  Accelerator,  // TranslateAccelerator first
  Mnemonics,    // the same, then IsAccelerator and OnMnemonic
  Dialog        // IsDialogMessage only; the control is never asked
};

enum class Persistence { PropertyBag, StreamInit, Storage, None };

struct Profile {
  std::string name;
  Keys keys = Keys::Accelerator;
  Persistence persistence = Persistence::StreamInit;
  bool siteFirst = true;         // SetClientSite before InitNew
  bool siteEx = true;            // the site has IOleInPlaceSiteEx
  bool controlSite = true;       // and IOleControlSite
  bool ambients = true;          // and ambient properties
  bool frame = true;             // GetWindowContext gives a frame
  bool document = false;         // and a document window
  bool extent = true;            // SetExtent before activation
  bool rectsFirst = false;       // SetObjectRects before the window exists
  bool uiActivateFirst = false;  // UI activation at once, not in place and then UI
  bool userMode = true;          // false: a design tool
};

// Ambients first, property bag, SetClientSite before InitNew.
Profile formProfile();
// In place, then UI activation; accelerators and mnemonics of the control are looked up.
Profile dotnetProfile();
// A dialog with IsDialogMessage.
Profile dialogProfile();
// A document with a window of its own and storages.
Profile documentProfile();
// As little as a container can do, in an unusual order.
Profile minimalProfile();
// All in which a user works.
std::vector<Profile> allProfiles();
// A design tool: user mode is off, and a window is demanded all the same.
Profile designProfile();

inline void PrintTo(const Profile& profile, std::ostream* out) { *out << profile.name; }

}  // namespace container
