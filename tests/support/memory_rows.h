// Rows of memory tables for classes that can be displayed: what an object is, is what it displays.
#pragma once

#include <utility>

#include "support/displayed.h"
#include "support/failing_new.h"

namespace nqtest {

// call(object) answers whether it was done. Done, it has done all; else the object is as before.
template <class Object, class Call>
MemoryCase Answers(const char* operation, Object object, Call call) {
  return {operation, [=](Injection& inject) {
            const Object before = object;
            Object done = object, tried = object;
            call(done);
            bool answer = false;
            inject([&] { answer = call(tried); });
            return Verdict{Displayed(tried) == Displayed(answer ? done : before) &&
                           (answer || inject.HasFailed())};
          }};
}

// make() gives the object, or what is documented where memory ends: `lost`.
template <class Make, class Object>
MemoryCase Makes(const char* operation, Make make, Object lost) {
  return {operation, [=](Injection& inject) {
            const std::string want = Displayed(make());
            Object object = lost;
            inject([&] { object = make(); });
            const std::string got = Displayed(object);
            return Verdict{got == want || (inject.HasFailed() && got == Displayed(lost))};
          }};
}

// A copy is the object, or what is documented where memory ends; a move allocates nothing.
template <class Object>
void AddObject(std::vector<MemoryCase>& rows, const char* name, Object object, Object lost) {
  rows.push_back(Makes(
      name, [=] { return Object(object); }, lost));
  rows.push_back({name, [=](Injection& inject) {
                    Object from = object, to = object;
                    inject([&] {
                      Object moved(std::move(from));
                      to = std::move(moved);
                    });
                    return Verdict{!inject.HasFailed() && Displayed(to) == Displayed(object),
                                   "a move that allocates"};
                  }});
}

}  // namespace nqtest

// A row for a call on r, a copy of the object, and one for an expression that makes an object.
#define NQ_ANSWERS(object, call) \
  ::nqtest::Answers(#call, object, [=]([[maybe_unused]] auto& r) { return call; })
#define NQ_MAKES(made, lost) \
  ::nqtest::Makes(           \
      #made, [=] { return made; }, lost)
