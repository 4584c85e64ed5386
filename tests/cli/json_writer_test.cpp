#include "cli/json_writer.hpp"

#include <cmath>

#include <gtest/gtest.h>

#include "support/temp_folder.hpp"

namespace larkstone::cli {
namespace {

TEST(JsonWriterTest, NumbersHaveTheirDigitsAndTextsAreEscaped) {
  const test::TempFolder folder;
  Output output(folder / "out.json");
  JsonWriter json(output);
  json.beginObject();
  json.key("single");
  json.number(0.1F);
  json.key("real");
  json.number(1.0 / 3.0);
  json.key("none");
  json.number(std::nan(""));
  json.key("list");
  json.beginArray();
  json.number(std::int64_t{-7});
  json.newLine();
  json.text("a\"\n\xC3\xA9\xFF");
  json.boolean(true);
  json.beginObject();
  json.endObject();
  json.null();
  json.endArray();
  json.endObject();
  ASSERT_TRUE(output.close());
  EXPECT_EQ(test::bytesOf(folder / "out.json"),
            "{\"single\": 0.100000001, \"real\": 0.33333333333333331, \"none\": null, "
            "\"list\": [-7, \n\"a\\\"\\n\xC3\xA9\xEF\xBF\xBD\", true, {}, null]}\n");
}

}  // namespace
}  // namespace larkstone::cli
