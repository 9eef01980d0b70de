// SPDX-License-Identifier: MIT
#include "launch/exec_line.h"

#include <QUrl>
#include <vector>

#include "launch/desktop_entry.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Word {
  QString text;
  bool quoted = false;  // some part of it stood in quotes
};

// Takes Exec apart. Stricter lines (a quoted word is quoted as a whole) are the rule; quotes that
// begin inside a word, single quotes and "\" outside quotes are read too, since installed entries
// have them.
class WordSplitter {
 public:
  explicit WordSplitter(const QString& line) : line_(line) {}

  std::optional<std::vector<Word>> Split() {
    for (; at_ < line_.size(); ++at_) {
      const QChar c = line_[at_];
      if (c.category() == QChar::Other_Control && c != u'\t') return std::nullopt;
      if (quote_.isNull()) {
        TakeUnquoted(c);
      } else {
        TakeQuoted(c);
      }
    }
    if (!quote_.isNull()) return std::nullopt;
    EndWord();
    return std::move(words_);
  }

 private:
  void TakeUnquoted(QChar c) {
    if (c == u' ' || c == u'\t') {
      EndWord();
      return;
    }
    inWord_ = true;
    if (c == u'"' || c == u'\'') {
      quote_ = c;
      word_.quoted = true;
    } else {
      word_.text += c == u'\\' && at_ + 1 < line_.size() ? line_[++at_] : c;
    }
  }

  void TakeQuoted(QChar c) {
    if (c == quote_) {
      quote_ = QChar();
      return;
    }
    const bool escape = c == u'\\' && quote_ == u'"' && at_ + 1 < line_.size() &&
                        u"\"`$\\"_s.contains(line_[at_ + 1]);
    word_.text += escape ? line_[++at_] : c;
  }

  void EndWord() {
    if (inWord_) words_.push_back(word_);
    word_ = {};
    inWord_ = false;
  }

  const QString& line_;
  qsizetype at_ = 0;
  QChar quote_;
  bool inWord_ = false;
  Word word_;
  std::vector<Word> words_;
};

// Fills the field codes of one Exec line.
class CodeFiller {
 public:
  CodeFiller(const DesktopEntry& entry, const LaunchTarget& target)
      : entry_(entry), target_(target) {}

  bool Take(const Word& word) {
    const QString& text = word.text;
    if (words_.isEmpty()) return TakeProgram(text);
    if (text == u"%i"_s) {
      if (!entry_.icon.isEmpty()) words_ << u"--icon"_s << entry_.icon;
      return true;
    }
    const bool codeAlone = text.size() == 2 && text[0] == u'%';
    QString filled;
    // A word of nothing but codes that stand for nothing is no empty argument, it is none.
    bool present = text.isEmpty();
    for (qsizetype i = 0; i < text.size(); ++i) {
      if (text[i] != u'%') {
        filled += text[i];
        present = true;
        continue;
      }
      ++i;
      if (i == text.size()) return false;
      if (!codeAlone && !MayStandBesideText(text[i], word)) return false;
      const auto value = ValueOf(text[i]);
      if (!value) return false;
      present = present || !value->isEmpty();
      filled += *value;
    }
    if (present) words_ << filled;
    return true;
  }

  QStringList Finish() {
    if (!targetTaken_ && !target_.text.isEmpty()) words_ << target_.text;
    return std::move(words_);
  }

 private:
  // No field code but %% may have a part in what is run.
  bool TakeProgram(QString text) {
    const QString percent = u"%%"_s;
    if (text.isEmpty() || QString(text).remove(percent).contains(u'%')) return false;
    words_ << text.replace(percent, u"%"_s);
    return true;
  }

  // A list of files or addresses stands by itself; no target stands within quotes.
  static bool MayStandBesideText(QChar code, const Word& word) {
    if (code == u'F' || code == u'U') return false;
    return !word.quoted || (code != u'f' && code != u'u');
  }

  std::optional<QString> ValueOf(QChar code) {
    switch (code.unicode()) {
      case u'%':
        return u"%"_s;
      case u'c':
        return entry_.localName;
      case u'k':
        return entry_.path;
      case u'f':
      case u'F':
        targetTaken_ = true;
        if (!target_.isFile && !target_.text.isEmpty()) return std::nullopt;
        return target_.text;
      case u'u':
      case u'U':
        targetTaken_ = true;
        if (!target_.isFile) return target_.text;
        return QString::fromLatin1(QUrl::fromLocalFile(target_.text).toEncoded());
      // Codes of former days stand for nothing.
      case u'd':
      case u'D':
      case u'n':
      case u'N':
      case u'v':
      case u'm':
        return QString();
      default:
        return std::nullopt;
    }
  }

  const DesktopEntry& entry_;
  const LaunchTarget& target_;
  bool targetTaken_ = false;
  QStringList words_;
};

}  // namespace

std::optional<QStringList> ExpandExec(const DesktopEntry& entry, const LaunchTarget& target) {
  const auto words = WordSplitter(entry.exec).Split();
  if (!words || words->empty()) return std::nullopt;
  CodeFiller filler(entry, target);
  for (const Word& word : *words) {
    if (!filler.Take(word)) return std::nullopt;
  }
  return filler.Finish();
}

}  // namespace zentorin
