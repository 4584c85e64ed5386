#include "larkstone/event/derived_course_codec.hpp"

#include "larkstone/event/record_codec.hpp"

namespace larkstone {

namespace {

constexpr std::int64_t bytesPerPair = 4;
constexpr std::int64_t bytesPerCode = 2;

void writeLegs(ByteWriter& writer, const LRKLegs& legs) {
  writer.byte(etagDerivedCourseNoOfLegs);
  writer.integer(legs.count());
  for (int i = 0; i < legs.count(); ++i) {
    writer.integer(legs.beginCode(i));
    writer.integer(legs.endCode(i));
  }
}

void writeCodes(ByteWriter& writer, enmFileTag tag, const LRKCodes& codes) {
  if (codes.count() == 0) return;
  writer.byte(tag);
  writer.integer(codes.count());
  for (const Code code : codes.codes()) writer.integer(code);
}

void writeReferences(ByteWriter& writer, const LRKDerivedCourse& course) {
  writer.byte(etagDerivedCourseNoOfRunners);
  writer.integer(course.noOfRunners());
  for (int i = 0; i < course.noOfRunners(); ++i) {
    writer.integer(course.runnerCategoryIndex(i));
    writer.integer(course.runnerIndex(i));
  }
}

// The length of a list that is there as a whole, else 0.
int readCount(ByteReader& reader, std::int64_t bytesPerEntry) {
  const int count = reader.integer();
  return reader.has(count * bytesPerEntry) ? count : 0;
}

LRKLegs readLegs(ByteReader& reader) {
  LRKLegs legs;
  for (int left = readCount(reader, bytesPerPair); left > 0; --left) {
    const Code begin = reader.integer();
    legs.add(begin, reader.integer(), 0, 0);
  }
  return legs;
}

LRKCodes readCodes(ByteReader& reader) {
  LRKCodes codes;
  for (int left = readCount(reader, bytesPerCode); left > 0; --left) codes.add(reader.integer());
  return codes;
}

void readReferences(ByteReader& reader, LRKDerivedCourse& course) {
  course.noOfRunners(readCount(reader, bytesPerPair));
  for (int i = 0; i < course.noOfRunners(); ++i) {
    course.runnerCategoryIndex(i, reader.integer());
    course.runnerIndex(i, reader.integer());
  }
}

}  // namespace

std::string encodeDerivedCourse(const LRKDerivedCourse& course) {
  ByteWriter writer;
  writeRecords(writer, course, [&](enmFileTag tag) {
    if (tag == etagDerivedCourseNoOfLegs) {
      writeLegs(writer, course.legs());
    } else if (tag == etagDerivedCourseNoOfCodesEqualToStart) {
      writeCodes(writer, tag, course.codesEqualToStart());
    } else if (tag == etagDerivedCourseNoOfCodesEqualToFinish) {
      writeCodes(writer, tag, course.codesEqualToFinish());
    } else {
      writeReferences(writer, course);
    }
  });
  return writer.take();
}

LRKDerivedCourse decodeDerivedCourse(std::string_view record) {
  LRKDerivedCourse course;
  ByteReader reader(record);
  while (!reader.atEnd()) {
    const enmFileTag tag = readTag(reader);
    if (tag == etagDerivedCourseNoOfLegs) {
      course.legs(readLegs(reader));
    } else if (tag == etagDerivedCourseNoOfCodesEqualToStart) {
      course.codesEqualToStart(readCodes(reader));
    } else if (tag == etagDerivedCourseNoOfCodesEqualToFinish) {
      course.codesEqualToFinish(readCodes(reader));
    } else if (tag == etagDerivedCourseNoOfRunners) {
      readReferences(reader, course);
    } else if (!readRecord(reader, tag, course)) {
      reader.skipText();
    }
  }
  return course;
}

}  // namespace larkstone
