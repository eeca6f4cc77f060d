// The kill engine: the units of traces, the selection, the log and the two kinds of run over them.
#pragma once

#include "delete/delete_path.h"
#include "delete/file_analyzer/file_analyzer.h"
#include "kill/kill_run.h"
#include "kill/log_step.h"
#include "kill/selection.h"
#include "kill/traces/trace_units.h"

namespace qb {

class KillEngine {
 public:
  // All of it must outlive the engine.
  KillEngine(const KillNeeds& needs, RunDisplay& display, RunHost& host)
      : delete_path_(needs.platform, needs.channels, needs.history_removed, display, needs.life),
        analyzer_(needs.platform, needs.channels, needs.life),
        units_(needs, delete_path_, analyzer_, display),
        selection_(needs.settings.store()),
        log_(needs, display),
        run_(needs, display, host, log_, selection_, units_) {}

  KillRun& run() { return run_; }
  RunLog& log() { return log_; }
  const Selection& selection() const { return selection_; }
  TraceUnits& units() { return units_; }
  DeletePath& delete_path() { return delete_path_; }
  clsFileAnalyzer& file_analyzer() { return analyzer_; }

 private:
  DeletePath delete_path_;
  clsFileAnalyzer analyzer_;
  TraceUnits units_;
  Selection selection_;
  RunLog log_;
  KillRun run_;
};

}  // namespace qb
