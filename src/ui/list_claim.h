// SPDX-License-Identifier: MIT
#pragma once

#include <QLocalServer>
#include <QObject>

#include <QCoro/QCoroTask>

namespace zentorin {

// Makes one window the window of a list file, so that a second start with the same file can bring
// it to the front instead of opening the list twice. The claim is a lock that the system drops
// when the process ends in whatever way; the socket beside it only carries the wish to come
// forward. Both lie in a folder that nobody but the user can reach; without such a folder every
// claim is granted.
class ListClaim : public QObject {
  Q_OBJECT

 public:
  // `folder` is made when it is missing, its parent has to exist.
  explicit ListClaim(const QString& folder = RuntimeFolder(), QObject* parent = nullptr);
  ~ListClaim() override;

  // The user's own runtime folder for this program.
  static QString RuntimeFolder();

  // Gives the former claim up and takes the one on `listFile`; an empty path only gives up. False
  // when another window has it.
  bool Take(const QString& listFile);
  // Asks the window that has the list to come forward. False when it does not answer.
  QCoro::Task<bool> RaiseHolder(QString listFile);

 Q_SIGNALS:
  // Another start wants this window to the front. The token, which may be empty, is its right to do
  // so on the desktop.
  void RaiseRequested(const QByteArray& activationToken);

 private:
  QString BaseName(const QString& listFile) const;
  void GiveUp();
  void AnswerNext();

  QString folder_;  // empty: there is none to be trusted
  QString claimed_;
  int lock_ = -1;
  QLocalServer server_;
};

}  // namespace zentorin
