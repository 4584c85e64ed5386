#include "larkstone/event/category_codec.hpp"

#include <algorithm>

#include "larkstone/core/text.hpp"
#include "larkstone/event/record_codec.hpp"
#include "larkstone/model/runner_origin.hpp"

namespace larkstone {

namespace {

constexpr std::int64_t bytesPerPunch = 5;
constexpr std::int64_t bytesPerLegLength = 8;

void writePunches(ByteWriter& writer, enmFileTag tag, const LRKPunches& punches) {
  writer.byte(tag);
  writer.integer(punches.count());
  for (int k = 0; k < punches.count(); ++k) {
    writer.integer(punches.code(k));
    writer.int24(punches.time(k));
  }
}

// The punches as they stand: a start or finish code in an odd place stays there.
void readPunches(ByteReader& reader, LRKPunches& punches) {
  const int count = reader.integer();
  if (!reader.has(count < 0 ? -1 : count * bytesPerPunch)) return;
  punches.count(count);
  for (int k = 0; k < count; ++k) {
    const Code code = reader.integer();
    punches.edit(k, reader.int24(), code);
  }
}

void writeRunner(ByteWriter& writer, const LRKRunner& runner) {
  writer.byte(etagRunner);
  const std::size_t length = writer.placeholder();
  writeRecords(writer, runner, [&](enmFileTag tag) {
    if (tag == etagRunnerPunches) {
      writePunches(writer, tag, runner.punches());
    } else if (runner.extraPunches().count() > 0) {
      writePunches(writer, tag, runner.extraPunches());
    }
  });
  writer.fillCount(length);
}

void writeLegLengths(ByteWriter& writer, const LRKCategory& category) {
  const std::size_t length = writer.placeholder();
  for (const LegLength& entry : category.legLengthArray()) {
    writer.integer(entry.beginCode);
    writer.integer(entry.endCode);
    writer.longInteger(entry.length);
  }
  writer.fillCount(length);
}

// The part of a block that is there.
std::string_view readBlock(ByteReader& reader) {
  const std::int64_t length = reader.longInteger();
  return reader.raw(std::min(length, reader.remaining()));
}

void readLegLengths(std::string_view block, LRKCategory& category) {
  ByteReader reader(block);
  while (reader.remaining() >= bytesPerLegLength) {
    const Code begin = reader.integer();
    const Code end = reader.integer();
    category.legLength(begin, end, reader.longInteger());
  }
}

}  // namespace

std::string encodeCategory(const LRKCategory& category) {
  ByteWriter writer;
  writeRecords(writer, category, [&](enmFileTag tag) {
    writer.byte(tag);
    if (tag == etagCategoryNoOfRunners) {
      writer.integer(category.noOfRunners());
    } else {
      writeLegLengths(writer, category);
    }
  });
  for (int i = 0; i < category.noOfRunners(); ++i) writeRunner(writer, category.runner(i));
  return writer.take();
}

std::vector<std::string_view> runnerBlocks(std::string_view record) {
  std::vector<std::string_view> blocks;
  ByteReader reader(record);
  while (!reader.atEnd() && blocks.size() < LRK_MAX_LIST) {
    const enmFileTag tag = readTag(reader);
    if (tag != etagRunner) {
      readTagValue(reader, categoryTags, tag);
      continue;
    }
    const std::string_view block = readBlock(reader);
    if (!reader.failed()) blocks.push_back(block);
  }
  return blocks;
}

void decodeRunner(std::string_view block, LRKRunner& runner) {
  ByteReader reader(block);
  while (!reader.atEnd()) {
    const enmFileTag tag = readTag(reader);
    if (tag == etagRunnerPunches) {
      readPunches(reader, runner.punches());
    } else if (tag == etagRunnerExtraPunches) {
      readPunches(reader, runner.extraPunches());
    } else if (!readRecord(reader, tag, runner)) {
      reader.skipText();
    }
  }
}

LRKCategory decodeCategory(std::string_view record, int categoryIndex) {
  LRKCategory category;
  category.categoryIndex(categoryIndex);
  category.noOfRunners(static_cast<int>(runnerBlocks(record).size()));
  ByteReader reader(record);
  int runners = 0;
  while (!reader.atEnd()) {
    const enmFileTag tag = readTag(reader);
    if (tag == etagRunner) {
      const std::string_view block = readBlock(reader);
      if (reader.failed() || runners == category.noOfRunners()) break;
      decodeRunner(block, category.runner(runners++));
    } else if (tag == etagCategoryLegLengths) {
      readLegLengths(readBlock(reader), category);
    } else if (!readRecord(reader, tag, category)) {
      readTagValue(reader, categoryTags, tag);
    }
  }
  numberRunners(category);
  return category;
}

void numberRunners(LRKCategory& category) {
  for (int i = 0; i < category.noOfRunners(); ++i) {
    RunnerOrigin::set(category.runner(i), category.categoryIndex(),
                      std::string(sharedName(category.name())), i);
  }
}

}  // namespace larkstone
