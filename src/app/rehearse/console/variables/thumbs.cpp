// The thumbnail audit.
#include <array>

#include "app/rehearse/console/variables.h"
#include "widgets/control.h"

namespace qb::rehearse::variables {
namespace {

constexpr std::array kVariables = std::to_array<Variable>({
    {"Files_Searched", [](Program& p) { return std::to_string(p.thumbs().Files_Searched()); }},
    {"Thumbs_Located", [](Program& p) { return std::to_string(p.services().thumbs.Thumbs_Located); }},
    {"Thumbnails_Found", [](Program& p) { return std::to_string(p.services().thumbs.Thumbnails_Found); }},
    {"Thumbs_Deleted", [](Program& p) { return std::to_string(p.services().thumbs.Thumbs_Deleted); }},
    {"Scan_Cancelled", [](Program& p) { return BooleanText(p.thumbs().Scan_Cancelled()); }},
    {"Scan_Running", [](Program& p) { return BooleanText(p.thumbs().Scan_Running()); }},
    {"Scan_Done", [](Program& p) { return BooleanText(p.thumbs().Scan_Done()); }},
    {"No_Prompt_On_Close", [](Program& p) { return BooleanText(p.thumbs().No_Prompt_On_Close()); }},
    {"Report_Busy", [](Program& p) { return BooleanText(p.thumbs().Report_Busy()); }},
    {"Thumbs_Index", [](Program& p) { return std::to_string(p.thumbs().Thumbs_Index()); }},
});

}  // namespace

std::span<const Variable> Thumbs() {
  return kVariables;
}

}  // namespace qb::rehearse::variables
