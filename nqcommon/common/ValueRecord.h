#pragma once

#include <memory>
#include <string>
#include <vector>

#include <nqcommon/common/Value.h>
#include <nqcommon/export.h>

namespace NQCommon_940 {

// A row of values with names, at positions in the order in which the names were added.
//
// Sharing   Copies share the names until one of them takes or loses a name. So the rows of a source
//           are made as copies of one record, and filled by position:
//
//             const ValueRecord empty(std::vector<std::string>{"age", "income"});
//             ValueRecord row = empty;
//             row.SetValue(0, 41.0);
//
//           Such a row costs its values and 48 bytes. Loops ask IndexOf once and go by position.
// Failure   An absent name or position gives -1, false or a null value. Operations of Value that
//           are called may throw NQException. A record is unchanged after std::bad_alloc, but for
//           the entries that AddAll had added by then.
// Threads   One object, one thread at a time; copies may be with other threads.
//
// The virtual operations are declared in a fixed order, the library's binary interface.
class NQ_API ValueRecord {
 public:
  ValueRecord() = default;
  // A null value for each name; a name that comes again is left out.
  explicit ValueRecord(const std::vector<std::string>& names);
  ValueRecord(const ValueRecord& other);
  ValueRecord& operator=(const ValueRecord& other);
  // Leave `other` empty.
  ValueRecord(ValueRecord&& other) noexcept = default;
  ValueRecord& operator=(ValueRecord&& other) noexcept = default;
  virtual ~ValueRecord();

  // Equal sizes, and equal values when both records are walked in the order of their names. The
  // names are deliberately not compared: a = 1, b = 2 equals x = 1, y = 2. A record equals itself,
  // even where its values do not.
  virtual bool operator==(const ValueRecord& other) const;
  // Gives the name a value, at its position or, for a new name, at the end. Returns the position.
  virtual int Add(const std::string& name, const Value& value);
  // Adds all entries of `other` in the order of their names. Returns true.
  virtual bool AddAll(const ValueRecord& other);
  // Replaces the value of a name that is there. With sameType a value that is not null takes only
  // one of its own type.
  virtual bool Set(const std::string& name, const Value& value, bool sameType);
  // Takes an entry out; those behind it move up. False for an absent name.
  virtual bool Remove(const std::string& name);
  // Takes all entries out.
  virtual void Clear();
  // Value::ClearValue for every value.
  virtual void ClearValues();
  // Makes value i null. Not range-checked.
  virtual void SetMissingValue(int i);
  // The value, copied; null where there is none.
  virtual Value Get(const std::string& name) const;
  virtual Value Get(int i) const;
  // The position of a name; -1 where it is absent.
  virtual int IndexOf(const std::string& name) const;
  virtual bool Contains(const std::string& name) const;
  virtual int Size() const;

  // The names in byte order when sorted, otherwise by position.
  virtual std::vector<std::string> Names(bool sorted) const;
  // The name at a position; "" when there is none.
  virtual std::string GetName(int i) const;
  // Value i takes the value and its type. Not range-checked.
  virtual void SetValue(int i, bool value);
  virtual void SetValue(int i, int value);
  virtual void SetValue(int i, long long value);
  template <class Integer, IfOtherInteger<Integer> = 0>
  void SetValue(int i, Integer value) {
    SetValue(i, ToLongLong(value));
  }
  virtual void SetValue(int i, double value);
  virtual void SetValue(int i, const char* value);
  virtual void SetValue(int i, const std::string& value);
  // The values by position.
  virtual const std::vector<Value>& GetRecord() const;

  // Diagnostic display: name = value, by position.
  void Display() const;

 private:
  struct NameIndex;

  Value& At(int i);
  int Find(const std::string& name) const;

  std::vector<Value> fvValues;
  std::shared_ptr<NameIndex> fNames;  // of all values; null while there are none
};

}  // namespace NQCommon_940
