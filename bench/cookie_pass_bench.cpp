// The cookie pass over 20,000 cookie files must not cost more with 2,000 keep rows than with 20; and the
// plain double loop over the same rows and files must find the same ones to keep.
#include <cstdio>
#include <memory>
#include <sstream>
#include <vector>

#include "bench/ratio.h"
#include "cookies/keep_matcher.h"

namespace {

constexpr int kEntries = 20000;

std::vector<std::string> Urls() {
  std::vector<std::string> urls;
  for (int i = 0; i < kEntries; ++i) {
    urls.push_back("cookie:user@www.site" + std::to_string(i * 7919 % 50000) + ".example/path/" + std::to_string(i));
  }
  return urls;
}

std::vector<std::string> Rows(int count) {
  std::vector<std::string> rows;
  for (int i = 0; i < count; ++i) rows.push_back("site" + std::to_string(i * 13) + ".example");
  return rows;
}

std::vector<bool> PlainDoubleLoop(const std::vector<std::string>& urls, const std::vector<std::string>& rows) {
  std::vector<bool> kept;
  for (const std::string& url : urls) {
    bool hit = false;
    for (const std::string& row : rows) hit = hit || url.find(row) != std::string::npos;
    kept.push_back(hit);
  }
  return kept;
}

std::vector<bool> Pass(const std::vector<std::string>& urls, const std::vector<std::string>& rows) {
  const qb::KeepMatcher matcher(rows);
  std::vector<bool> kept;
  for (const std::string& url : urls) kept.push_back(matcher.HitIn(url));
  return kept;
}

}  // namespace

int main() {
  const std::vector<std::string> urls = Urls(), few = Rows(20), many = Rows(2000);
  if (Pass(urls, few) != PlainDoubleLoop(urls, few) || Pass(urls, many) != PlainDoubleLoop(urls, many)) {
    std::puts("the pass and the plain double loop differ");
    return 1;
  }
  std::vector<bool> result;
  const int matched = qb::bench::CompareRatio({"20,000 entries, 20 keep rows", kEntries, [] {}, [&] { result = Pass(urls, few); }},
                                              {"20,000 entries, 2,000 keep rows", kEntries, [] {},
                                               [&] { result = Pass(urls, many); }},
                                              1.2, 9);
  qb::bench::CompareRatio({"the pass, 2,000 keep rows", kEntries, [] {}, [&] { result = Pass(urls, many); }},
                          {"the plain double loop, 2,000 keep rows", kEntries, [] {},
                           [&] { result = PlainDoubleLoop(urls, many); }},
                          1e9, 1);
  return matched;
}
