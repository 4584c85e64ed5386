#pragma once

// What the tests of the program share: a way to run it, and lists for it.

#include <array>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "import/lists.hpp"
#include "support/temp_folder.hpp"

namespace larkstone::test {

struct Result {
  int exitCode = -1;
  std::string out;
  std::string err;
};

class ProgramTest : public testing::Test {
 protected:
  // Paths and names in the arguments hold no quotes.
  Result run(const std::string& arguments) const {
    const std::string err = folder_ / "stderr";
    const std::string command = std::string(LARKSTONE_PROGRAM) + " " + arguments + " 2>" + err;
    Result result;
    std::FILE* pipe = ::popen(command.c_str(), "r");
    std::array<char, 4096> buffer{};
    std::size_t count = 0;
    while ((count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0) {
      result.out.append(buffer.data(), count);
    }
    const int status = ::pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.err = bytesOf(err);
    return result;
  }

  TempFolder folder_;
  std::string example_ = std::string(LARKSTONE_EXAMPLES) + "/club-race.xml";

  // Three runners on S-31-32-F. Legs: Ann 60 50 40, Bea 60 60 30, and Cid without a time at 32.
  std::string race_ = folder_.write("race.xml", R"(<?xml version="1.0"?>
<ResultList xmlns="http://www.orienteering.org/datastandard/3.0" iofVersion="3.0" creator="test">
 <Event><Name>R &amp; D</Name><StartTime><Date>2026-05-03</Date></StartTime></Event>
 <ClassResult><Class><Name>H21</Name></Class>
  <PersonResult><Person><Name><Family>A &lt;x&gt;</Family><Given>Ann</Given></Name></Person>
   <Result><StartTime>2026-05-03T10:00:00</StartTime><Time>150</Time><Status>OK</Status>
    <SplitTime><ControlCode>31</ControlCode><Time>60</Time></SplitTime>
    <SplitTime><ControlCode>32</ControlCode><Time>110</Time></SplitTime></Result></PersonResult>
  <PersonResult><Person><Name><Family>B</Family><Given>Bea</Given></Name></Person>
   <Result><StartTime>2026-05-03T10:02:00</StartTime><Time>150</Time><Status>OK</Status>
    <SplitTime><ControlCode>31</ControlCode><Time>60</Time></SplitTime>
    <SplitTime><ControlCode>32</ControlCode><Time>120</Time></SplitTime></Result></PersonResult>
  <PersonResult><Person><Name><Family>C</Family><Given>Cid</Given></Name></Person>
   <Result><StartTime>2026-05-03T10:04:00</StartTime><Time>170</Time><Status>MissingPunch</Status>
    <SplitTime><ControlCode>31</ControlCode><Time>70</Time></SplitTime>
    <SplitTime status="Missing"><ControlCode>32</ControlCode></SplitTime></Result></PersonResult>
 </ClassResult>
</ResultList>
)");
};

// A class of runners on these controls, a minute apart, each with a result of 15 minutes.
inline std::string listOf(const std::string& name,
                          std::initializer_list<std::vector<int>> runners) {
  std::string persons;
  for (const std::vector<int>& controls : runners) {
    std::string result =
        "<StartTime>2026-05-03T10:00:00</StartTime><Time>900</Time><Status>OK</Status>";
    for (std::size_t i = 0; i < controls.size(); ++i) {
      result += split(std::to_string(controls[i]), std::to_string(60 * (i + 1)));
    }
    persons += person3(element("Result", result));
  }
  return class3(persons, name);
}

}  // namespace larkstone::test
