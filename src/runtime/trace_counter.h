// HistoryRemoved: the lifetime number of traces killed. Every kill routine raises it by itself.
#pragma once

namespace qb {

class TraceCounter {
 public:
  double Value() const { return value_; }
  void Set(double value) { value_ = value; }
  void Add(double count) { value_ += count; }

 private:
  double value_ = 0;
};

}  // namespace qb
