// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QTime>

#include <functional>

class TDataSet;
class TTIDatabase;

/// A roll as it stands in the register of write-offs.
struct Roll
{
    QString of; ///< order number
    QString number; ///< within the order, "001"
    QDate day;
    QTime time; ///< invalid: none is kept
    QString shift;
    QString worker;
    double kg = 0;

    /// Order, number and weight of the current row of a list of write-offs.
    static Roll in(const TDataSet &writeOffs);
};

/// The planned and produced kilograms of an order.
struct OrderBalance
{
    double planned = 0;
    double produced = 0;

    double open() const; ///< to the gram; negative when more was produced than planned
};

/// What follows a change that is committed. When it fails, the message begins with the sentence that says what stands.
std::function<void()> following(const QString &done, const std::function<void()> &action);

/// What follows a roll that is written, its log line and its label. When that fails the message says that the roll
/// stands, so that nobody weighs it again.
std::function<void()> afterWriting(const Roll &roll, const std::function<void()> &action);

/// Writes rolls off against their order and takes them back, for every screen that does so: the register itself and
/// the finished-fabric stock, while the mill keeps one (parameter "MAL" 10).
///
/// What changes something is to be called within a Save, which starts with lock(), unless it says otherwise.
class RollRegister
{
public:
    explicit RollRegister(TTIDatabase &database);

    /// Keeps other stations from changing the order until the save ends. False when the order does not exist.
    /// Throws EDatabaseError (Conflict) when another station was faster.
    bool lock(const QString &of);
    OrderBalance balance(const QString &of);
    /// The number that the order's next roll gets.
    QString Proxima_baixa(const QString &of);
    /// A number that was handed over in advance; the order's next one when a roll got it meanwhile, or none was.
    QString numberFor(const QString &of, const QString &handedOver);
    void insert(const Roll &roll);
    /// Removes the roll with its defects. Throws EDatabaseError (Conflict) when another station has taken the roll back
    /// already, also when the number went to a roll of another weight since.
    void remove(const Roll &roll);
    /// Gives the defects counted under one number to the roll of another, which has none of its own yet.
    void moveDefects(const QString &of, const QString &from, const QString &to);
    /// The plan becomes what was produced.
    void closeAtProduced(const QString &of);
    /// The plan becomes what was produced and so much more (kg), which is about to be.
    void planFor(const QString &of, double kg);

    /// Takes a roll back in a save of its own, and logs it under the screen's label. Throws as remove() does, and EQen
    /// when only the log line failed, which says that the roll is taken back.
    void Estorna_baixa(const Roll &roll, const QString &logLabel);

private:
    void addToStock(const QString &of, double kg);
    void takeFromStock(const QString &of, double kg);

    TTIDatabase &m_database;
};
