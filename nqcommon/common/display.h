// Diagnostic display: labelled values, vectors and maps as plain text, for tracing.
//
// Every line goes through DisplayText(1, line), so it starts with a line feed and none ends with
// one. In the bytes below, `name` stands for the name and <lf> for the line feed between the lines
// of one call.
//
//   DisplayB             name = true                          or "false"
//   DisplayD, DisplayDF  name = 0.1                           "%g", full precision "%.17g"
//   DisplayI, DisplayL   name = 7                             all 64 bits of a long
//   DisplayS             name = text
//   DisplayDA, DV        name (size = 2)<lf>  0.5 miss        the size only when asked for
//   DisplayIV, UV        name (size = 2)<lf>  1 2
//   DisplayBV            name (size = 2)<lf>  t f
//   DisplaySV            name (size = 2)<lf>  "a" "b c"       no escaping
//   DisplayVPD, VPDI     name (size = 2)<lf>  0.5 1 miss 2    two numbers per pair
//   DisplayVPII          name (size = 2)<lf> (1,2) (3,4)      a blank after each pair
//   DisplayDVV, SVV      name<lf>vec[0]<lf>  1 2<lf>vec[1]    name <none>
//   DisplayBVV           name ( number of rows =  2, number of columns =  3 )<lf>  t f t<lf>  f f f
//   DisplayDVTR          name (number of elements = 3, number of rows = 2)<lf>row 0:  1 2<lf>...
//   DisplayDAS, DVTRS    as DisplayDA and DisplayDVTR without the first line
//   DisplayIIM, DDM      name<lf>map size = 2<lf> (1,2)<lf> (3,4)     name <empty>
//   DisplayVIM           name<lf> (1,2)<lf> (3,4)                     name <empty>
//   DisplaySLDM          name<lf>Map's StringList: (size = 1)<lf>  "a"<lf>Map's double = 0.5<lf>...
//   DisplayIntVecIntMap  name<lf>Map key (size = 1)<lf>  1<lf>Map value = 2
//   DisplayIntVecDVecMap name<lf>Map key (size = 1)<lf>  1<lf>Map value (size = 1)<lf>  0.5
//   DisplayTimeStamp     name: 2024-01-31-09-05-00            local time
//
// Value lines  A line starts as one blank and takes ten values, each with a blank before it; an
//              empty vector has none.
// Missing      The system-missing value is the word miss; NaN and infinities are those of printf.
// Locale       Conversions are those of printf, so "%g" takes the decimal character of the C
//              locale in force.
// Failure      None: these functions report nothing, and accept every argument.
// Threads      The stream is one for the process and is not synchronised.
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <nqcommon/export.h>

namespace NQDisplay_940 {

// ---- The stream ---------------------------------------------------------------------------------

// Where all text goes; std::cout at first. The stream set must outlive its use here.
NQ_API void SetOutStream(std::ostream& out);
NQ_API std::ostream& GetOutStream();

// Writes n line feeds, flushing after each, then the text, and flushes. A null text writes nothing,
// not even the line feeds; n below 1 writes the text alone.
NQ_API void DisplayText(const long& n, const char* text);
NQ_API void DisplayText(const long& n, const std::string& text);

// ---- Single values ------------------------------------------------------------------------------

NQ_API void DisplayB(const std::string& name, bool value);
NQ_API void DisplayD(const std::string& name, double value);
NQ_API void DisplayDF(const std::string& name, double value);
NQ_API void DisplayI(const std::string& name, int value);
NQ_API void DisplayL(const std::string& name, long value);
NQ_API void DisplayS(const std::string& name, const std::string& value);

// The local time of the call: year, month from 1, day, hour, minute, second.
NQ_API void DisplayTimeStamp(const std::string& name);

// ---- Arrays and vectors -------------------------------------------------------------------------

// A null array or a count below 1 gives the header alone, with the count as it was given.
NQ_API void DisplayDA(const std::string& name, const double* values, int count, bool showSize);
NQ_API void DisplayDAS(const double* values, int count);

NQ_API void DisplayDV(const std::string& name, const std::vector<double>& values, bool showSize);
NQ_API void DisplayIV(const std::string& name, const std::vector<int>& values);
NQ_API void DisplayUV(const std::string& name, const std::vector<unsigned>& values);
NQ_API void DisplayBV(const std::string& name, const std::vector<bool>& values);
NQ_API void DisplaySV(const std::string& name, const std::vector<std::string>& values);

NQ_API void DisplayVPD(const std::string& name,
                       const std::vector<std::pair<double, double>>& values);
NQ_API void DisplayVPDI(const std::string& name, const std::vector<std::pair<double, int>>& values);
NQ_API void DisplayVPII(const std::string& name, const std::vector<std::pair<int, int>>& values);

// ---- Vectors by rows ----------------------------------------------------------------------------

// <none> tells that there is no inner vector; an empty inner vector is its header alone.
NQ_API void DisplayDVV(const std::string& name, const std::vector<std::vector<double>>& values);
NQ_API void DisplaySVV(const std::string& name,
                       const std::vector<std::vector<std::string>>& values);

// The number of columns is the length of the first row, 0 without rows; each row starts a line.
NQ_API void DisplayBVV(const std::string& name, const std::vector<std::vector<bool>>& values);

// One line per row, however long, numbered from 0; the last row takes what is left, and is counted.
// A row length below 1 makes no rows.
NQ_API void DisplayDVTR(const std::string& name, const std::vector<double>& values, int rowLength);
NQ_API void DisplayDVTRS(const std::vector<double>& values, int rowLength);

// The forms without a header, for code that passes a name to every function; it is not written.
inline void DisplayDAS(const std::string&, const double* values, int count) {
  DisplayDAS(values, count);
}
inline void DisplayDVTRS(const std::string&, const std::vector<double>& values, int rowLength) {
  DisplayDVTRS(values, rowLength);
}

// ---- Maps, in the order of their keys -----------------------------------------------------------

NQ_API void DisplaySLDM(const std::string& name,
                        const std::map<std::vector<std::string>, double>& values);
NQ_API void DisplayIntVecDVecMap(const std::string& name,
                                 const std::map<std::vector<int>, std::vector<double>>& values);
NQ_API void DisplayIntVecIntMap(const std::string& name,
                                const std::map<std::vector<int>, int>& values);
NQ_API void DisplayIIM(const std::string& name, const std::map<int, int>& values);
NQ_API void DisplayVIM(const std::string& name, const std::map<int, int>& values);
NQ_API void DisplayDDM(const std::string& name, const std::map<double, double>& values);

}  // namespace NQDisplay_940
