#include "program.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <new>
#include <stdexcept>

#include "interrupt.h"

namespace support {

std::string Today() {
  const std::time_t now = std::time(nullptr);
  char text[16];
  std::tm parts = {};
  localtime_r(&now, &parts);
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d", &parts)};
}

void Deliver(const std::string& program, const Request& request, const ModelData& data, Team& team,
             OutputFiles& documents, const std::vector<std::string>& titles, const Scorer& score,
             const std::function<void(std::ostream&)>& report) {
  PredictionCounts scored;
  const auto predict = [&](std::ostream& out) {
    scored =
        WritePredictions(data, titles, score,
                         {request.predict, request.predictTable, request.predictQuery}, team, out);
  };
  if (!request.predict.empty() && !request.out.empty()) {
    std::ofstream out(documents.Reserve(request.out), std::ios::binary);
    if (!out) throw std::runtime_error("cannot write " + request.out);
    predict(out);
    out.close();
    if (!out) throw std::runtime_error("cannot write " + request.out);
  } else if (!request.predict.empty()) {
    predict(std::cout);
  }
  if (request.predict.empty() || !request.out.empty()) report(std::cout);
  if (!request.out.empty()) PrintCounts(std::cout, scored);
  if (!std::cout.flush()) throw std::runtime_error("cannot write to standard output");
  documents.Commit();
  for (const std::string& note : data.Notes()) std::cerr << program << ": note: " << note << '\n';
  if (request.out.empty() && scored.missing + scored.unseen > 0) PrintCounts(std::cerr, scored);
}

void AgreeOnData(const std::string& path, Ranks* ranks) {
  if (!ranks) return;
  if (path == "-") throw std::runtime_error("ranks cannot share standard input");
  errno = 0;
  const bool opens = std::ifstream(path).peek() != std::ifstream::traits_type::eof();
  const int rank = ranks->Rank();
  std::string message = "rank " + std::to_string(rank) + " cannot read " + path +
                        (errno != 0 ? std::string(": ") + std::strerror(errno) : "");
  const auto place = opens ? Ranks::kNowhere : static_cast<std::uint64_t>(rank);
  if (ranks->FirstFailure(place, message) != Ranks::kNowhere) throw std::runtime_error(message);
}

int ExitStatusOf(const std::string& program, Ranks* ranks, const std::function<int()>& run) {
  try {
    return run();
  } catch (const Interrupted& interrupted) {
    return interrupted.ExitStatus();
  } catch (const std::bad_alloc&) {
    std::cerr << program << ": the memory does not suffice\n";
    if (ranks) ranks->Abort(kBadInput);  // the others may wait for this one
    return kBadInput;
  } catch (const std::exception& error) {
    if (!ranks || ranks->Rank() == 0) std::cerr << program << ": " << error.what() << '\n';
    return kBadInput;
  }
}

}  // namespace support
