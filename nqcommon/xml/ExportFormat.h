#pragma once

#include <nqcommon/export.h>

namespace NQXML_940 {

// The layout that a write asks for, and its state: one object goes by reference through the nodes
// of a tree. A write leaves the level as it found it, and the new-paragraph flag as the last node
// set it: an element sets it, a text node clears it.
class NQ_API ExportFormat {
 public:
  // True when the next tag starts a line.
  bool IsNewParagraph() const { return fFormat && fNewParagraph; }

  // True when tabs stand before the tags that start a line, and before each attribute.
  bool HasIndentation() const { return fFormat && fIndentation; }

  // The nesting depth of the node that is written, 0 at the root.
  int GetLevel() const { return fLevel; }

  // The master switch: without it the tree is one line, whatever the other two flags are.
  void SetFormat(bool on) { fFormat = on; }

  void SetIndentation(bool on) { fIndentation = on; }
  void SetIsNewParagraph(bool on) { fNewParagraph = on; }

  void IncreaseLevel() { ++fLevel; }
  void DecreaseLevel() { --fLevel; }

 private:
  bool fNewParagraph = true;
  bool fIndentation = false;
  bool fFormat = true;
  int fLevel = 0;
};

}  // namespace NQXML_940
