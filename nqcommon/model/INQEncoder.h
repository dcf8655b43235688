#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <nqcommon/export.h>

namespace NQXML_940 {

// Turns the raw value of one variable into the number that a model works with, and knows the
// variable's user-missing values.
//
//   NQCatNumEncoder  a number to the code of its category    missing or unseen: -1
//   NQStringEncoder  a text to the code of its category      missing or unseen: -1
//   NQContEncoder    a number to itself                      missing: the system-missing value
//   NQRoundEncoder   a frequency weight to a rounded one     missing: the system-missing value
//
// An operation that does not apply to an encoder (texts of a numeric one, value labels of one
// without categories) is there too: it answers as its comment tells for "other encoders", and
// changes nothing.
//
// Failure   Encoding never fails: a new category for which memory ends gets no code. Setters return
//           false, nothing changed, where they do not apply, the argument is out of range, or
//           memory ends. What has no such answer (copies, Decode, writing) throws std::bad_alloc. A
//           file that does not match makes ReadObjectXML write "Failure reading NQCatNumEncoder!"
//           (its class) to the standard error stream and throw a pointer to a new IOException,
//           which the catcher deletes; what was read before stays in the object, which can be used,
//           read again and destroyed.
// Threads   one object, one thread at a time; const operations may run together.
class NQ_API INQEncoder {
 public:
  enum EncoderType : int {
    EncoderNone = 0,
    EncoderContinuous = 1,
    EncoderNumericCategorical = 2,
    EncoderStringCategorical = 3,
    EncoderRounding = 4
  };

  virtual ~INQEncoder();

  virtual EncoderType GetEncoderType() const = 0;

  // The number of categories seen, or of bins; 0 of other encoders.
  virtual int GetNumberOfCategories() const;

  // Encode may give a new category its code, EncodeConst never does. Other encoders give their
  // answer for missing.
  virtual double Encode(double value) = 0;
  virtual double EncodeConst(double value) const = 0;
  virtual double Encode(const std::string& text) = 0;
  virtual double EncodeConst(const std::string& text) const = 0;

  // A number is missing that is the system-missing value, lies in the missing interval, or is
  // declared missing; a text that is declared missing (the empty text is not special). For other
  // encoders the system-missing value alone is missing, and no text is.
  virtual bool IsMissing(double value) const;
  virtual bool IsMissing(const std::string& text) const;

  // What the code stands for, the value itself and not its label: as a text, and as a number. Both
  // are "" and the system-missing value for a code without a category and of other encoders.
  virtual std::string Decode(int code) const;
  virtual double DecodeNum(int code) const;

  // A copy that shares nothing, which the caller owns.
  virtual INQEncoder* Clone() const = 0;

  // Labels by code, "" for none. They may come before their categories, and be fewer or more:
  // SetValueLabels takes any number, SetValueLabel a code up to the first without category and
  // label. False of other encoders.
  virtual bool SetValueLabels(const std::vector<std::string>& labels);
  virtual bool SetValueLabel(int code, const std::string& label);

  // Declares a value missing; one that is declared already takes the new label. False of other
  // encoders, and where memory ends.
  virtual bool AddDiscreteUserMissing(const std::string& value, const std::string& label);
  virtual bool AddDiscreteUserMissing(double value, const std::string& label);

  // Declares lo <= x <= hi missing, instead of an earlier interval. Bounds are kept as given: with
  // lo > hi, or NaN, no value is between them. False of other encoders.
  virtual bool SetMissingInterval(double lo, double hi);

  // The lists are empty of other encoders.
  virtual const std::vector<std::string>& GetValueLabels() const;
  virtual const std::vector<double>& GetDiscreteMissValues() const;
  virtual const std::vector<std::string>& GetDiscreteMissValuesStr() const;

  // One label for each of the values declared missing.
  virtual const std::vector<std::string>& GetMissValueLabels() const;

  // Without an interval the answer is false, and both bounds are system-missing.
  virtual bool GetMissingInterval(double& lo, double& hi) const;

  // Writes the encoder as one block of the save format; returns the lines written. The reader
  // returns the lines read, the same number.
  virtual int WriteObjectXML(std::ostream& os, int indent) const = 0;
  virtual int ReadObjectXML(std::ifstream& in) = 0;

  // Writes the state through the diagnostic display, between "<class> display start" and
  // "<class> display end".
  virtual void Display() const = 0;

  // Writes the label and the words of the type. A code above 4 shows " = Encoder type" from the
  // character of that index on, and nothing past its end; neither does a negative code.
  static void DisplayCode(const std::string& label, EncoderType type);

 protected:
  INQEncoder() = default;
  INQEncoder(const INQEncoder&) = default;
  INQEncoder& operator=(const INQEncoder&) = default;
};

}  // namespace NQXML_940
