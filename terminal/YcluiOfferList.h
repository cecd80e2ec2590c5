// The list of offers below a line.

#ifndef TERMINAL_YCLUIOFFERLIST_H_
#define TERMINAL_YCLUIOFFERLIST_H_

#include <cstddef>
#include <vector>

#include "terminal/YcluiColours.h"
#include "terminal/YcluiOffers.h"
#include "terminal/YcluiStyledText.h"

// Shows offers in rows, in one of which the selected offer is: with help texts one to a row,
// without in columns. Each group of offers begins a row of its own, and all but the first have a
// heading. The cost follows what is shown.
class YQRT_API YcluiOfferList {
 public:
  explicit YcluiOfferList(YcluiOffers& offers) : offers_(offers) {}

  // Opens the list; without a selection it is there to be read.
  void open(bool selects);
  void close() { isOpen_ = false; }
  bool isOpen() const { return isOpen_; }
  bool selects() const { return isOpen_ && selects_; }
  std::size_t selected() const { return selected_; }

  // Move the selection; after the last offer follows the first one. Rows are those that were shown
  // last.
  void next();
  void previous();
  void rowDown();
  void rowUp();

  // The rows for so much room, which is at least 1, around the selection. The last of several rows
  // counts what is left out.
  std::vector<YcluiStyledText> rows(std::size_t width, std::size_t room,
                                    const YcluiColours& colours);

 private:
  struct Row {
    const char* heading;  // null for a row of offers
    std::size_t first;
    std::size_t count;
  };

  YcluiOffers& offers_;
  bool isOpen_ = false;
  bool selects_ = false;
  bool hasHelp_ = false;
  std::size_t selected_ = 0;
  std::size_t widest_ = 0;  // of the names that were measured
  std::size_t measured_ = 0;
  std::size_t columns_ = 1;
  std::size_t firstRow_ = 0;
  std::vector<Row> rows_;  // from the first one on, as far as they were needed

  void measure(std::size_t count);
  std::size_t columnsFor(std::size_t width) const;
  void layOut(std::size_t width, std::size_t room);
  bool addRow(std::size_t& next);
  YcluiStyledText textOf(const Row& row, std::size_t width, const YcluiColours& colours) const;
};

#endif  // TERMINAL_YCLUIOFFERLIST_H_
