#include "cli/report_page.hpp"

#include <string>

#include "larkstone/core/text.hpp"

#include "cli/report_data.hpp"
#include "cli/web_files.hpp"

namespace larkstone::cli {

namespace {

// JSON that the page's scripts find by its id. Texts in it hold no "<".
void writeData(TextSink& output, const std::string& id, std::string_view json) {
  output.write("<script type=\"application/json\" id=\"data-" + id + "\">");
  output.write(json);
  output.write("</script>\n");
}

void writeHead(TextSink& output, const LRKEvent& event, std::string_view language) {
  output.write("<!DOCTYPE html>\n<html lang=\"en\" data-language=\"");
  output.write(escapedMarkup(language));
  output.write(
      "\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
      "style-src 'unsafe-inline'; script-src 'unsafe-inline'; img-src data:\">\n"
      "<link rel=\"icon\" href=\"data:,\">\n<title>");
  output.write(escapedMarkup(event.name()));
  output.write("</title>\n<style>\n");
  output.write(reportStyle);
  output.write("</style>\n</head>\n<body>\n");
  output.write(reportBody);
}

}  // namespace

int writeReport(TextSink& output, LRKEvent& event, const std::vector<int>& categories,
                const AnalysisOptions& options, const CommonOptions& common,
                std::string_view language) {
  writeHead(output, event, language);
  std::string classes;
  int number = 0;
  const int exitCode = forEachCourse(
      event, categories, options, common, [&](LRKCourse& course, const LRKCategory& category) {
        writeData(output, "course-" + std::to_string(number++), courseData(category, course));
        classes += (classes.empty() ? "" : ",") + classData(category, course);
        return exitDone;
      });
  if (exitCode == exitInterrupted) return exitCode;
  writeData(output, "classes", "[" + classes + "]");
  writeData(output, "event", eventData(event));
  writeData(output, "captions", captionData());
  output.write("<script>\n'use strict';\n(() => {\n");
  output.write(reportScript);
  output.write("})();\n</script>\n</body>\n</html>\n");
  return exitCode;
}

}  // namespace larkstone::cli
