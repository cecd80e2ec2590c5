#include "parser/YcluiAssignments.h"

#include <utility>

#include "foundation/YMemory.h"

YcluiAssignment::YcluiAssignment(std::string_view form, std::shared_ptr<YcluiAssignment> earlier)
    : text(form.data(), static_cast<int>(form.size())),
      before(std::move(earlier)),
      number(before == nullptr ? 1 : before->number + 1) {
  text.concat("\n");  // an empty value is followed by something
}

YcluiAssignment::~YcluiAssignment() {
  while (before != nullptr && before.use_count() == 1) {
    std::shared_ptr<YcluiAssignment> next = std::move(before->before);
    before = std::move(next);
  }
}

void YcluiAssignments::add(std::string_view text) {
  last_ =
      std::allocate_shared<YcluiAssignment>(YAllocator<YcluiAssignment>(), text, std::move(last_));
}

bool YcluiAssignments::isBeginningOf(const YcluiAssignments& other) const {
  const YcluiAssignment* link = other.last().get();
  while (link != nullptr && link->number > count()) link = link->before.get();
  return link == last().get();
}

bool YcluiAssignments::operator==(const YcluiAssignments& other) const {
  if (count() != other.count()) return false;
  const YcluiAssignment* a = last().get();
  const YcluiAssignment* b = other.last().get();
  for (; a != b; a = a->before.get(), b = b->before.get()) {
    if (std::string_view(a->text.buffer, a->text.length) !=
        std::string_view(b->text.buffer, b->text.length)) {
      return false;
    }
  }
  return true;
}
