#pragma once

// What the program answers over HTTP about one event.

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "larkstone/event/event.hpp"

#include "cli/analysis_options.hpp"

namespace larkstone::cli {

struct Answer {
  int status = 200;
  std::string type = "text/plain; charset=utf-8";
  std::string body;
};

/// Parameters of a request as they were sent; one that came twice is not there but refused.
using Parameters = std::map<std::string, std::string>;

/// Answers about an open event, which must outlive it; nothing outside the event is ever told. May
/// be asked from several threads.
///
///     /                 the report
///     /table            a split table with sort links: category, and on request sortBy and legNo
///     as
///                       the links have them, language
///     /api/event        the event and its categories, as `info --json` prints them
///     /api/analysis     the analysis, as `analyse` prints it: category, without it all
///
/// 400 for a parameter that is not one or has no such value, 404 for another path and for a
/// category that the event has not got.
class WebService {
 public:
  WebService(LRKEvent& event, const AnalysisOptions& options, const CommonOptions& common,
             std::string language)
      : event_(event), options_(options), common_(common), language_(std::move(language)) {}

  Answer answer(std::string_view path, const Parameters& parameters);

 private:
  Answer report();
  Answer table(const Parameters& parameters);
  Answer eventJson();
  Answer analysis(const Parameters& parameters);
  std::optional<int> categoryNamed(const std::string& name) const;

  LRKEvent& event_;
  const AnalysisOptions options_;
  const CommonOptions common_;
  const std::string language_;
  std::mutex mutex_;  // an event is used from one thread at a time
  std::string report_;
};

/// Serves until the user stops it: says where on standard error. The exit code.
int serve(WebService& service, const std::string& host, int port);

}  // namespace larkstone::cli
