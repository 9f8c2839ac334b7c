// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/icons.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The sum of the opacities of all pixels.
qint64 ink(const QPixmap &pixmap)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    qint64 sum = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            sum += qAlpha(image.pixel(x, y));
    return sum;
}

} // namespace

class TestIcons : public QObject
{
    Q_OBJECT

private slots:
    void everyIconIsDrawnAtEverySize_data();
    void everyIconIsDrawnAtEverySize();
    void aDisabledIconIsPaler();
    void aDenseScreenGetsMorePixels();
    void anUnknownIconIsNull();
};

void TestIcons::everyIconIsDrawnAtEverySize_data()
{
    QTest::addColumn<QString>("name");
    const QStringList drawings = QDir(u":/qen/icons"_s).entryList();
    QVERIFY(drawings.contains(u"app.svg"_s));
    for (const QString &drawing : drawings) {
        const QString name = drawing.section(u'.', 0, 0);
        QTest::newRow(qPrintable(name)) << name;
    }
}

void TestIcons::everyIconIsDrawnAtEverySize()
{
    QFETCH(QString, name);
    const QIcon icon = Icons::get(name);
    QVERIFY(!icon.isNull());
    for (const int side : {16, 24, 48}) {
        const QPixmap pixmap = icon.pixmap(QSize(side, side), 1.0);
        QCOMPARE(pixmap.size(), QSize(side, side));
        const double covered = double(ink(pixmap)) / (255.0 * side * side);
        QVERIFY2(covered > 0.04 && covered < 0.9, qPrintable(QString::number(covered)));
    }
}

void TestIcons::aDisabledIconIsPaler()
{
    const QIcon icon = Icons::get(u"scale");
    const qint64 normal = ink(icon.pixmap(QSize(24, 24), 1.0));
    QVERIFY(ink(icon.pixmap(QSize(24, 24), 1.0, QIcon::Disabled)) < normal / 2);
    QCOMPARE(ink(icon.pixmap(QSize(24, 24), 1.0)), normal);
}

void TestIcons::aDenseScreenGetsMorePixels()
{
    const QPixmap pixmap = Icons::get(u"scale").pixmap(QSize(24, 24), 2.0);
    QCOMPARE(pixmap.size(), QSize(48, 48));
    QCOMPARE(pixmap.deviceIndependentSize(), QSizeF(24, 24));

    QImage dense(48, 48, QImage::Format_ARGB32_Premultiplied);
    dense.setDevicePixelRatio(2.0);
    dense.fill(Qt::transparent);
    QPainter painter(&dense);
    Icons::get(u"scale").paint(&painter, QRect(0, 0, 24, 24));
    painter.end();
    QCOMPARE(dense, pixmap.toImage().convertToFormat(dense.format()));
}

void TestIcons::anUnknownIconIsNull()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"No icon named.*unicorn"_s));
    QVERIFY(Icons::get(u"unicorn").isNull());
}

QTEST_MAIN(TestIcons)
#include "tst_icons.moc"
