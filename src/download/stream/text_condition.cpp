// SPDX-License-Identifier: MIT
#include "download/stream/text_condition.h"

#include <QStringView>
#include <algorithm>
#include <array>
#include <vector>

namespace zentorin {
namespace {

struct Token {
  enum class Kind { Text, Operator };

  Kind kind = Kind::Text;
  QString text;
};

// Longer operators first: "<=" is no "<".
constexpr std::array<QStringView, 11> kOperators{u"<=", u">=", u"<>", u"==", u"!=", u"&&",
                                                 u"||", u"<",  u">",  u"=",  u"^"};

// A name ends at a blank, a quote, an operator or a bracket.
class Splitter {
 public:
  Splitter(const QString& text, const QHash<QString, QString>& variables)
      : text_(text), variables_(variables) {}

  std::optional<std::vector<Token>> Split() {
    while (at_ < text_.size()) {
      if (text_[at_].isSpace()) {
        ++at_;
      } else if (text_[at_] == u'"') {
        if (!TakeQuoted()) return std::nullopt;
      } else if (const QStringView found = OperatorHere(); !found.isEmpty()) {
        tokens_.push_back({Token::Kind::Operator, found.toString()});
        at_ += found.size();
      } else if (QStringView(u"&|()").contains(text_[at_])) {
        return std::nullopt;
      } else {
        TakeWord();
      }
    }
    return std::move(tokens_);
  }

 private:
  QStringView OperatorHere() const {
    const QStringView rest = text_.sliced(at_);
    for (const QStringView name : kOperators) {
      if (rest.startsWith(name)) return name;
    }
    return rest.startsWith(u'!') ? QStringView(u"!") : QStringView();
  }

  bool TakeQuoted() {
    QString taken;
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] != u'"') {
        taken += text_[at_];
      } else if (at_ + 1 < text_.size() && text_[at_ + 1] == u'"') {
        taken += text_[at_++];
      } else {
        ++at_;
        tokens_.push_back({Token::Kind::Text, taken});
        return true;
      }
    }
    return false;
  }

  void TakeWord() {
    const qsizetype start = at_;
    while (at_ < text_.size() && !text_[at_].isSpace() &&
           !QStringView(u"\"<>=!^&|()").contains(text_[at_])) {
      ++at_;
    }
    const QString word = text_.sliced(start, at_ - start).toString();
    tokens_.push_back({Token::Kind::Text, variables_.value(word, word)});
  }

  QStringView text_;
  const QHash<QString, QString>& variables_;
  qsizetype at_ = 0;
  std::vector<Token> tokens_;
};

// Plain decimal ones only: "nan" and "inf" are words.
std::optional<double> NumberOf(const QString& padded) {
  const QString text = padded.trimmed();
  const bool plain =
      std::ranges::all_of(text, [](QChar c) { return QStringView(u"+-.0123456789").contains(c); });
  bool isNumber = false;
  const double number = plain ? text.toDouble(&isNumber) : 0;
  return isNumber ? std::optional(number) : std::nullopt;
}

int Order(const QString& left, const QString& right) {
  const auto leftNumber = NumberOf(left);
  const auto rightNumber = NumberOf(right);
  if (!leftNumber || !rightNumber) return QString::compare(left, right);
  return *leftNumber < *rightNumber ? -1 : static_cast<int>(*leftNumber > *rightNumber);
}

std::optional<bool> Compare(const QString& left, const QString& name, const QString& right) {
  if (name == u"==") return left == right;
  if (name == u"!=") return left != right;
  if (name == u"=") return left.compare(right, Qt::CaseInsensitive) == 0;
  if (name == u"<>") return left.compare(right, Qt::CaseInsensitive) != 0;
  if (name == u"^") return left.contains(right, Qt::CaseInsensitive);
  const int order = Order(left, right);
  if (name == u"<") return order < 0;
  if (name == u">") return order > 0;
  if (name == u"<=") return order <= 0;
  if (name == u">=") return order >= 0;
  return std::nullopt;
}

// Reads tokens from left to right: a row of "&&" ends at each "||".
class Evaluator {
 public:
  explicit Evaluator(const std::vector<Token>& tokens) : tokens_(tokens) {}

  std::optional<bool> Evaluate() {
    bool any = false;
    bool all = true;
    while (true) {
      const auto side = TakeSide();
      if (!side) return std::nullopt;
      all = all && *side;
      if (at_ < tokens_.size() && Takes(u"&&")) continue;
      any = any || all;
      all = true;
      if (at_ == tokens_.size()) return any;
      if (!Takes(u"||")) return std::nullopt;
    }
  }

 private:
  std::optional<bool> TakeSide() {
    bool negated = false;
    while (Takes(u"!")) negated = !negated;
    const QString* left = TakeText();
    if (left == nullptr) return std::nullopt;
    std::optional<bool> holds = !left->isEmpty() && *left != u"0";
    const bool ends = at_ == tokens_.size() || Next(u"&&") || Next(u"||");
    if (!ends) {
      const Token& comparison = tokens_[at_++];
      const QString* right = TakeText();
      if (comparison.kind != Token::Kind::Operator || right == nullptr) return std::nullopt;
      holds = Compare(*left, comparison.text, *right);
    }
    if (holds && negated) return !*holds;
    return holds;
  }

  bool Next(QStringView name) const {
    return at_ < tokens_.size() && tokens_[at_].kind == Token::Kind::Operator &&
           tokens_[at_].text == name;
  }

  bool Takes(QStringView name) {
    if (!Next(name)) return false;
    ++at_;
    return true;
  }

  const QString* TakeText() {
    if (at_ == tokens_.size() || tokens_[at_].kind != Token::Kind::Text) return nullptr;
    return &tokens_[at_++].text;
  }

  const std::vector<Token>& tokens_;
  std::size_t at_ = 0;
};

}  // namespace

// Operators, loosest first; those of one line bind alike:
//   ||                       any side holds
//   &&                       both sides hold
//   !                        in front of a comparison or of a text: negates the whole of it
//   == !=                    equal or not, to the letter
//   = <>                     equal or not, letter case ignored
//   < > <= >=                order: of numbers if both sides are decimal ones, else of characters
//   ^                        the left text contains the right one, letter case ignored
// There are no two comparisons in a row ("a < b < c") and no brackets: "(" and ")" stand in quotes
// only. A text stands in double quotes, in which a doubled quote is a quote, or is the name of a
// variable.
//
// Time grows with the text's length, and nothing nests.
std::optional<bool> EvaluateCondition(const QString& condition,
                                      const QHash<QString, QString>& variables) {
  const auto tokens = Splitter(condition, variables).Split();
  if (!tokens) return std::nullopt;
  return Evaluator(*tokens).Evaluate();
}

}  // namespace zentorin
