// Any bytes as a thumbnail cache: the pictures that come out are the pieces between the four bytes, whole and in
// order, and no others.
#include <cstdint>

#include "core/program.h"
#include "tests/fuzz/opened_machine.h"
#include "thumbs/picture_cut.h"
#include "view/text/text_view.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

struct StartedProgram {
  StartedProgram() { qb::test::Require(program.Start()); }
  qb::test::OpenMachine stage;
  qb::TextView view{*stage.machine, "Quillbarrow"};
  qb::Program program{stage.machine->platform(), view, "", qb::WindowHandle::None};
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static StartedProgram started;
  qb::machine::Machine& machine = *started.stage.machine;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::string path = "C:\\thumbcache_1.db";
  const std::string folder = started.program.services().data_folder + "\\thumbs";
  qb::test::Require(machine.MakeFile(path, bytes));
  if (machine.Exists(folder) == "folder") qb::test::Require(machine.Delete(folder));

  std::vector<std::string> pieces;
  for (std::size_t at = bytes.find(qb::kPictureStart); at != std::string::npos;) {
    const std::size_t next = bytes.find(qb::kPictureStart, at + 4);
    pieces.push_back(bytes.substr(at, next - at));
    at = next;
  }
  qb::test::Require(qb::CountPictures(bytes) == pieces.size());
  const std::size_t handles = machine.OpenHandles();
  std::int32_t number = 0;
  started.program.thumbs().Split_Images(path, number, false);
  qb::test::Require(number == 0 && machine.OpenHandles() == handles);
  const auto files = machine.ListBelow(folder);
  qb::test::Require((files ? files->size() : 0) == pieces.size());
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const std::string name = std::to_string(i + 1) + ".jpg";
    qb::test::Require(machine.Content(std::string(folder).append("\\t0-").append(name)) == pieces[i]);
    std::string copy = pieces[i];
    copy[3] = '\xC0';
    qb::test::Require(machine.Content("C:\\thumbs\\" + name) == copy);
  }
  return 0;
}
