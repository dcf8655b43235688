#pragma once

#include <nqcommon/export.h>

namespace NQXML_940 {

// What the readers of saved objects throw when their input does not match. It is thrown by pointer,
// as a new object that the catcher deletes; the message has gone to the standard error stream.
class NQ_API IOException {};

}  // namespace NQXML_940
