// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "demo/calendar.h"
#include "demo/masterdata.h"
#include "demo/random.h"

/// What happened at the mill. Days are those of the Calendar.
namespace Demo {

/// An inbound invoice of a client's yarn.
struct Document
{
    QString number;
    int client = 0;
    int day = 0;
    QString note;
};

struct Lot
{
    int document = 0;
    int yarn = 0;
    QString name;
    QStringView brand;
    int price = 0;
    Grams received = 0;
    Grams consumed = 0; ///< outside of the orders: samples, waste
    Grams reserved = 0;
    Grams sentBack = 0; ///< as yarn
    Grams sentInFabric = 0;
};

struct Reservation
{
    int lot = 0;
    Grams weight = 0;
    Grams sent = 0;
};

struct Roll
{
    int day = 0;
    int shift = 0;
    int second = 0; ///< since the shift began
    Grams weight = 0;
    int worker = 0;
};

struct Order
{
    QString number;
    int day = 0;
    int fabric = 0;
    int machine = 0;
    Grams perRoll = 0;
    Grams plan = 0;
    int plannedRolls = 0;
    bool finished = false;
    QVector<Reservation> reservations;
    QVector<Roll> rolls;
    qsizetype releasedRolls = 0;
    Grams invoiced = 0;

    QString lot() const; ///< the fabric's lot
    Grams made() const;
};

struct ReleaseLine
{
    int order = 0;
    Grams weight = 0;
    int rolls = 0;
};

/// Fabric of one client released for invoicing.
struct Release
{
    int client = 0;
    int day = 0;
    int invoice = -1;
    QVector<ReleaseLine> lines = {};
};

struct InvoiceItem
{
    QString code;
    QString lot;
    QString document; ///< the client's document that yarn goes back against; empty for fabric
    Grams weight = 0;
    int price = 0; ///< ten-thousandths of a real
    bool billed = false;
};

/// An outbound invoice.
struct Invoice
{
    enum class State { Valid, Cancelled };

    int client = 0;
    int day = 0;
    State state = State::Valid;
    int takesBack = -1; ///< the invoice that the client returned with this one
    QVector<InvoiceItem> items = {};
    QString number = {};
};

/// All that one company's tables are written from.
struct Mill
{
    Mill(int companyNumber, QDate today);

    int company;
    Random random;
    Calendar calendar;
    QVector<Client> clients;
    QVector<Machine> machines;
    QVector<Worker> workers;
    QVector<Yarn> yarns;
    QVector<Fabric> fabrics;
    QVector<Document> documents;
    QVector<Lot> lots;
    QVector<Order> orders; ///< by number
    QVector<Release> releases; ///< by number
    QVector<Invoice> invoices; ///< in the order in which they were made out, those of one day by their numbers

    /// The yarns of a fabric with their shares in its active colours.
    QVector<Need> needsOf(const Fabric &fabric) const;
};

/// The share of a weight, half a gram upwards.
Grams part(Grams weight, int share);
/// The value of a weight at a unit price, half a cent upwards.
Cents value(Grams weight, int price);
QString padded(int number, int width);

} // namespace Demo
