// The shredder and the thumbnail audit.
#include "app/rehearse/console/routines.h"

namespace qb::rehearse::routines {
namespace {

std::vector<std::string> ShredWithEvents(Program& program, const std::string& path, std::int32_t passes, bool scattered,
                                         bool attributes) {
  clsShredder& shredder = program.thumbs().Shredder();
  std::vector<std::string> events;
  shredder.p_SourceFile = path;
  shredder.p_Passes = passes;
  shredder.p_Scattered = scattered;
  shredder.p_Attributes = attributes;
  shredder.Shred_Start = [&](std::int32_t count) { events.push_back("Shred_Start " + std::to_string(count)); };
  shredder.Pass_Done = [&](std::int32_t pass) { events.push_back("Pass_Done " + std::to_string(pass)); };
  shredder.Shred_End = [&] { events.emplace_back("Shred_End"); };
  shredder.File_Shred();
  shredder.Shred_Start = shredder.Pass_Done = nullptr;
  shredder.Shred_End = nullptr;
  // The object is the window's own, whose flow never sets this one.
  shredder.p_Scattered = false;
  return events;
}

}  // namespace

std::span<const ProgramRoutine> Thumbs() {
  static const std::vector<ProgramRoutine> table = {
      {"clsShredder.File_Shred",
       Bind([](Program& p, const std::string& path, std::int32_t passes, bool scattered, bool attributes) {
         return ShredWithEvents(p, path, passes, scattered, attributes);
       })},
      {"clsShredder.File_Exists",
       Bind([](Program& p, const std::string& path) { return p.thumbs().Shredder().File_Exists(path); })},
      {"cmdThumbs_Click", Bind([](Program& p) { p.ShowThumbnailScan(); })},
      {"Scan_Drives", Bind([](Program& p) { p.thumbs().Scan_Drives(); })},
      {"Reset_Results", Bind([](Program& p) { p.thumbs().Reset_Results(); })},
      {"Enable_Buttons", Bind([](Program& p) { p.thumbs().Enable_Buttons(); })},
      {"Disable_Buttons", Bind([](Program& p) { p.thumbs().Disable_Buttons(); })},
      {"Do_Cancel", Bind([](Program& p) { p.thumbs().Do_Cancel(); })},
      {"Count_Images", Bind([](Program& p) { return p.thumbs().Count_Images(); })},
      {"Split_Images", Bind([](Program& p, const std::string& path, std::int32_t number, bool single) {
         p.thumbs().Split_Images(path, number, single);
       })},
      {"Open_Report", Bind([](Program& p) { p.thumbs().Open_Report(); })},
      {"Write_Report", Bind([](Program& p) { p.thumbs().Write_Report(); })},
      {"Close_Report", Bind([](Program& p, int number) { p.thumbs().Close_Report(number); })},
      {"Shred_Thumbs_File", Bind([](Program& p, const std::string& path) { p.thumbs().Shred_Thumbs_File(path); })},
  };
  return table;
}

}  // namespace qb::rehearse::routines
