#include <nqcommon/xml/internal/OutputBuffer.h>

#include <ostream>

namespace NQXML_940::internal {

void WriteBytes(std::ostream& os, std::string_view bytes) {
  if (bytes.empty()) return;
  // The put after a refused byte sets the fail bit beside the bad bit. So the last byte is put: it
  // finds the stream as the puts before it would have left it.
  os.write(bytes.data(), static_cast<std::streamsize>(bytes.size() - 1));
  os.put(bytes.back());
}

void OutputBuffer::Flush() {
  Send({fBytes, fSize});
  fSize = 0;
}

void OutputBuffer::Send(std::string_view bytes) {
  if (fString != nullptr) {
    fString->append(bytes);
  } else {
    WriteBytes(*fStream, bytes);
  }
}

}  // namespace NQXML_940::internal
