#include "larkstone/event/runner_block.hpp"

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

constexpr std::int64_t bytesPerPunch = 5;

}  // namespace

RunnerBlock::RunnerBlock(std::string_view block) {
  ByteReader reader(block);
  while (!reader.atEnd()) {
    const enmFileTag tag = readTag(reader);
    const bool known = isIn(runnerTags, tag);
    const std::size_t begin = reader.position();
    skipTagValue(reader, runnerTags, tag);
    if (!known || reader.failed()) continue;
    values_[static_cast<std::size_t>(tag - runnerTags.first)] =
        block.substr(begin, reader.position() - begin);
  }
}

TagValue RunnerBlock::value(enmFileTag tag) const {
  if (tag == etagRunnerName && (has(etagRunnerFirstName) || has(etagRunnerLastName))) return name();
  if (!has(tag)) return {};
  ByteReader reader(at(tag));
  return readTagValue(reader, runnerTags, tag);
}

std::int32_t RunnerBlock::number(enmFileTag tag) const {
  return fromTagValue<std::int32_t>(value(tag)).value_or(0);
}

std::string RunnerBlock::name() const {
  if (!has(etagRunnerFirstName) && !has(etagRunnerLastName)) return text(etagRunnerName);
  return std::string(trimmed(text(etagRunnerFirstName) + " " + text(etagRunnerLastName)));
}

enmStatus RunnerBlock::status() const {
  return has(etagRunnerStatus) ? static_cast<enmStatus>(number(etagRunnerStatus)) : estaUnknown;
}

Time RunnerBlock::resultTime() const {
  ByteReader reader(at(etagRunnerPunches));
  const int punches = reader.integer();
  if (punches < 2) return 0;
  const Code first = reader.integer();
  const Time start = reader.int24();
  reader.raw((punches - 2) * bytesPerPunch);
  const Code last = reader.integer();
  const Time finish = reader.int24();
  if (!isStartCode(first) || !isFinishCode(last)) return 0;
  if (isDisq(start) || isDisq(finish) || status() != estaOK) return LRK_NO_TIME;
  return finish - start;
}

LRKCodes RunnerBlock::codes() const {
  ByteReader reader(at(etagRunnerPunches));
  LRKCodes codes;
  codes.count(reader.integer());
  for (int i = 0; i < codes.count(); ++i) {
    codes.code(i, reader.integer());
    reader.int24();
  }
  return codes;
}

}  // namespace larkstone
