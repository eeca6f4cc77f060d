#include "app/rehearse/console/console.h"

#include <algorithm>
#include <istream>
#include <ostream>
#include <utility>

namespace qb::rehearse {
namespace {

// How many commands may run inside each other, each of them waiting in a loop of the program for the next;
// each takes its share of the stack.
constexpr std::size_t kMostDepth = 256;

}  // namespace

Console::Console(machine::Machine& machine, std::istream& in, std::ostream& out, std::ostream& err, ProgramMaker maker,
                 std::string prompt)
    : machine_(machine), in_(in), out_(out), err_(err), maker_(std::move(maker)), prompt_(std::move(prompt)) {
  machine_.on_pump = [this] { OnPump(); };
  machine_.on_wait = [this] { return OnWait(); };
}

Console::~Console() {
  machine_.on_pump = nullptr;
  machine_.on_wait = nullptr;
}

Status Console::Run() {
  while (!stopped_ && NextCommand()) {
    if (rebooting_) FinishReboot();
    SweepEnded();
  }
  CutPower();
  EndProcesses();
  return status_;
}

void Console::EndProcesses() {
  // Nothing of the program runs any more; what goes with its objects (handles, timers, the mutex) is
  // what Windows takes back from a process that is gone.
  machine_.gate().PowerOn();
  while (!processes_.empty()) processes_.pop_back();
}

Console::Process* Console::Current() {
  for (auto process = processes_.rbegin(); process != processes_.rend(); ++process) {
    if (!(*process)->program->Ended()) return process->get();
  }
  return nullptr;
}

void Console::Start(std::string command_line) {
  if (Current() == nullptr) machine_.EnterProgramFolder();
  auto process = std::make_unique<Process>(machine_);
  process->program =
      maker_(machine_.platform(), process->view, std::move(command_line), process->view.ApplicationWindow());
  RunningProgram& program = *process->program;
  processes_.push_back(std::move(process));
  program.Start();
}

void Console::Reboot() {
  for (std::size_t i = processes_.size(); i-- > 0;) {
    RunningProgram& program = *processes_[i]->program;
    if (!program.Ended()) program.MainForm().Unload(UnloadMode::WindowsSession);
  }
  // A command of the script may run deep inside the program's own loops: they must all be left before
  // Windows can start. Until then the program gets nothing done any more.
  rebooting_ = true;
  machine_.gate().PowerOff();
}

void Console::FinishReboot() {
  EndProcesses();
  rebooting_ = false;
  machine_.Boot();
}

void Console::Schedule(std::uint64_t pumps, const Arguments& words) {
  waiting_.push_back({pumps_ + pumps, words.RawToTheEnd(), line_number_});
}

Reply Console::Ask(const Arguments& words) {
  FoundCommand found = FindCommand(words.words());
  if (found.command == nullptr) return Reply::Problem(found.problem);
  bool powered = machine_.gate().Powered();
  Reply reply = found.command->run(*this, words.From(found.name_words));
  // What a routine makes of the power's going is no answer.
  if (powered && !machine_.gate().Powered()) reply.lines.clear();
  return reply;
}

void Console::ReportMissed(const std::string& text) {
  if (status_ == Status::NotUnderstood) return;
  out_ << "line " << line_number_ << ": " << text << "\n";
  status_ = Status::NotHeld;
}

bool Console::NextCommand() {
  std::string line;
  while (true) {
    if (!prompt_.empty()) out_ << prompt_ << std::flush;
    if (!std::getline(in_, line)) return false;
    ++lines_read_;
    if (line.ends_with('\r')) line.pop_back();
    std::size_t first = line.find_first_not_of(" \t");
    if (first == std::string::npos || line[0] == '#') continue;
    RunLine(line, lines_read_);
    return true;
  }
}

void Console::RunLine(const std::string& line, std::size_t line_number) {
  auto words = SplitWords(line);
  if (!words) return Fail(line_number, "a double quote stands where none may");
  if (depth_ == kMostDepth) return Fail(line_number, "too many commands inside each other");
  std::size_t outer = std::exchange(line_number_, line_number);
  ++depth_;
  Reply reply = Ask(Arguments(*words, line));
  --depth_;
  // Another line may have run in between, from inside the program.
  line_number_ = outer;
  if (reply.problem) return Fail(line_number, *reply.problem);
  for (const std::string& answer : reply.lines) out_ << answer << "\n";
  // Whoever reads along sees an answer before the next command, however long that takes.
  out_.flush();
}

void Console::OnPump() {
  ++pumps_;
  while (!stopped_ && machine_.gate().Powered()) {
    // Looked for anew each time: the command may pump, and may add to the list.
    auto next = std::find_if(waiting_.begin(), waiting_.end(), [&](const Waiting& w) { return w.due <= pumps_; });
    if (next == waiting_.end()) return;
    Waiting due = std::move(*next);
    waiting_.erase(next);
    RunLine(due.line, due.line_number);
  }
}

bool Console::OnWait() {
  if (stopped_ || !machine_.gate().Powered()) return false;
  if (!NextCommand()) CutPower();
  return !stopped_ && machine_.gate().Powered() && Current() != nullptr;
}

void Console::SweepEnded() {
  std::erase_if(processes_, [](const auto& process) { return process->program->Ended(); });
}

void Console::CutPower() {
  stopped_ = true;
  if (!machine_.gate().Powered()) return;
  std::string problem;
  if (!machine_.Save(problem)) {
    err_ << problem << "\n";
    status_ = Status::NotUnderstood;
  }
  machine_.gate().PowerOff();
}

void Console::Fail(std::size_t line_number, const std::string& text) {
  err_ << "line " << line_number << ": " << text << "\n";
  status_ = Status::NotUnderstood;
  CutPower();
}

bool AsksForCalls(std::istream& script) {
  for (std::string line; std::getline(script, line);) {
    if (line.ends_with('\r')) line.pop_back();
    const auto words = line.starts_with('#') ? std::nullopt : SplitWords(line);
    if (words && std::any_of(words->begin(), words->end(), [](const Word& word) { return word.text == "calls"; })) {
      return true;
    }
  }
  return false;
}

}  // namespace qb::rehearse
