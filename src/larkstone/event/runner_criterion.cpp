#include "larkstone/event/runner_criterion.hpp"

#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

template <class Value>
bool compare(const Value& value, enmComparisonOperator comparison, const Value& sought) {
  switch (comparison) {
    case ecopEqual:
      return value == sought;
    case ecopLessThan:
      return value < sought;
    case ecopMoreThan:
      return value > sought;
    case ecopLessThanOrEqual:
      return value <= sought;
    case ecopMoreThanOrEqual:
      return value >= sought;
    case ecopNotEqual:
      return value != sought;
  }
  return false;
}

std::optional<std::string> soughtText(enmFileTag tag, const TagValue& sought) {
  if (encodingOf(tag) != TagEncoding::text) return std::nullopt;
  std::optional<std::string> text = textOf(sought);
  if (text) text = lowered(*text);
  return text;
}

// A single is sought as the single nearest to it: 0.1 shall be found.
std::optional<double> soughtNumber(enmFileTag tag, const TagValue& sought) {
  const TagEncoding encoding = encodingOf(tag);
  if (encoding == TagEncoding::text) return std::nullopt;
  std::optional<double> number = numberOf(sought);
  if (encoding == TagEncoding::date && !number) {
    if (const std::optional<Date> date = fromTagValue<Date>(sought)) number = date->day;
  }
  if (number && encoding == TagEncoding::single) number = static_cast<float>(*number);
  return number;
}

}  // namespace

RunnerCriterion::RunnerCriterion(enmFileTag tag, enmComparisonOperator comparison,
                                 const TagValue& sought)
    : tag_(tag),
      comparison_(comparison),
      text_(soughtText(tag, sought)),
      number_(soughtNumber(tag, sought)),
      pattern_(text_.value_or("")) {}

bool RunnerCriterion::holds(const RunnerBlock& runner) const {
  const TagValue value = runner.value(tag_);
  if (const auto* text = std::get_if<std::string>(&value)) return text_ && holdsForText(*text);
  const std::optional<double> number = numberOf(value);
  return number && number_ && compare(*number, comparison_, *number_);
}

bool RunnerCriterion::holdsForText(const std::string& text) const {
  const std::string value = lowered(text);
  if (comparison_ == ecopEqual) return pattern_.matches(value);
  if (comparison_ == ecopNotEqual) return !pattern_.matches(value);
  return compare(value, comparison_, *text_);
}

}  // namespace larkstone
