#include "tests/windows/container/Profile.h"

namespace container {

Profile formProfile() {
  Profile profile;
  profile.name = "form";
  profile.persistence = Persistence::PropertyBag;
  return profile;
}

Profile dotnetProfile() {
  Profile profile;
  profile.name = "dotnet";
  profile.keys = Keys::Mnemonics;
  return profile;
}

Profile dialogProfile() {
  Profile profile;
  profile.name = "dialog";
  profile.keys = Keys::Dialog;
  profile.siteEx = false;
  return profile;
}

Profile documentProfile() {
  Profile profile;
  profile.name = "document";
  profile.persistence = Persistence::Storage;
  profile.document = true;
  profile.uiActivateFirst = true;
  return profile;
}

Profile minimalProfile() {
  Profile profile;
  profile.name = "minimal";
  profile.keys = Keys::Dialog;
  profile.siteFirst = false;
  profile.siteEx = false;
  profile.controlSite = false;
  profile.ambients = false;
  profile.extent = false;
  profile.rectsFirst = true;
  profile.uiActivateFirst = true;
  return profile;
}

Profile designProfile() {
  Profile profile = dotnetProfile();
  profile.name = "design";
  profile.userMode = false;
  return profile;
}

std::vector<Profile> allProfiles() {
  return {formProfile(), dotnetProfile(), dialogProfile(), documentProfile(), minimalProfile()};
}

}  // namespace container
