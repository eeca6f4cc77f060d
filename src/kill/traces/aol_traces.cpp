#include "kill/traces/aol_traces.h"

#include "runtime/folders.h"

namespace qb {

namespace {

constexpr std::string_view kDroplist[] = {"organize\\*.ARL", "organize\\*.AUT"};
constexpr std::string_view kCache[] = {"organize\\CACHE\\*.*"};

constexpr const char* kOperaCache = "C:\\Program Files\\Opera\\CACHE4\\*.*";
constexpr std::string_view kOperaFiles[] = {
    "C:\\Program Files\\Opera\\autopera.win", "C:\\Program Files\\Opera\\cookies4.dat",
    "C:\\Program Files\\Opera\\download.dat", "C:\\Program Files\\Opera\\global.dat",
    "C:\\Program Files\\Opera\\opera.dir",    "C:\\Program Files\\Opera\\opera.win",
    "C:\\Program Files\\Opera\\vlink4.dat",
};

}  // namespace

void AolTraces::DeleteBelowAol(Names patterns) {
  const std::string& folder = settings_.Text(Setting::AOLdir);
  // The user's own setting, taken as it stands.
  if (!LongEnoughPath(folder)) return;
  for (std::string_view pattern : patterns) names_.DeletePattern(folder + std::string(pattern));
}

void AolTraces::Kill_AOL_Droplist() {
  DeleteBelowAol(kDroplist);
}
void AolTraces::Kill_AOL_Cache() {
  DeleteBelowAol(kCache);
}

void AolTraces::Kill_Opera() {
  names_.DeletePattern(kOperaCache);
  names_.DeletePaths(kOperaFiles);
}

std::span<const NamedRoutine<AolTraces>> AolTraces::Routines() {
  static constexpr NamedRoutine<AolTraces> kRoutines[] = {
      {"Kill_AOL_Droplist", &AolTraces::Kill_AOL_Droplist},
      {"Kill_AOL_Cache", &AolTraces::Kill_AOL_Cache},
      {"Kill_Opera", &AolTraces::Kill_Opera},
  };
  return kRoutines;
}

}  // namespace qb
