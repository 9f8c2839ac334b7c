// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/pagestore.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

Page pageWith(const QString &text)
{
    PageItem item;
    item.place = {10, 20, 30.5, 4};
    item.text = text;
    item.family = u"DejaVu Serif"_s;
    item.size = 7.5;
    item.bold = true;
    item.italic = true;
    item.alignment = Qt::AlignRight | Qt::AlignBottom;
    item.colour = Qt::red;
    item.background = QColor(240, 240, 200);
    item.thickness = 0.7;
    item.bars = {{1, 2, 3, 4}, {5, 6, 7, 8}};
    return {{item}};
}

Page pageWith(const QImage &picture)
{
    PageItem item;
    item.kind = PageItem::Kind::Picture;
    item.image = picture;
    return {{item}};
}

QImage noise(int side)
{
    QImage image(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            image.setPixel(x, y, qRgb(x * 7919 % 251, y * 104729 % 241, (x * y) % 239));
    }
    return image;
}

} // namespace

class TestPageStore : public QObject
{
    Q_OBJECT

private slots:
    void aPageComesBackAsItWas();
    void pagesAreReadInAnyOrderWhileOthersAreAdded();
    void aPictureOnEveryPageIsOneAndTheSame();
    void anItemWithoutAPictureHasNone();
};

void TestPageStore::aPageComesBackAsItWas()
{
    PageStore store({210, 297});
    QCOMPARE(store.paper(), QSizeF(210, 297));
    store.append(pageWith(u"Malha nº 7\nção"_s));
    const PageItem item = store.page(0).items.constFirst();
    const PageItem was = pageWith(u"Malha nº 7\nção"_s).items.constFirst();
    QCOMPARE(item.kind, was.kind);
    QCOMPARE(item.place, was.place);
    QCOMPARE(item.text, was.text);
    QCOMPARE(item.family, was.family);
    QCOMPARE(item.size, was.size);
    QCOMPARE(item.bold, was.bold);
    QCOMPARE(item.italic, was.italic);
    QCOMPARE(item.alignment, was.alignment);
    QCOMPARE(item.colour, was.colour);
    QCOMPARE(item.background, was.background);
    QCOMPARE(item.thickness, was.thickness);
    QCOMPARE(item.bars, was.bars);
}

void TestPageStore::pagesAreReadInAnyOrderWhileOthersAreAdded()
{
    PageStore store({100, 100});
    for (int number = 0; number < 50; ++number) {
        store.append(pageWith(u"página %1"_s.arg(number)));
        QCOMPARE(store.count(), number + 1);
        const int other = number / 2;
        QCOMPARE(store.page(other).items.constFirst().text, u"página %1"_s.arg(other));
    }
    QCOMPARE(store.page(49).items.constFirst().text, u"página 49"_s);
}

void TestPageStore::aPictureOnEveryPageIsOneAndTheSame()
{
    PageStore store({100, 100});
    const QImage logo = noise(200);
    for (int number = 0; number < 5; ++number)
        store.append(pageWith(logo));
    store.append(pageWith(noise(50)));
    const QImage first = store.page(0).items.constFirst().image;
    QCOMPARE(first, logo);
    QCOMPARE(store.page(4).items.constFirst().image.cacheKey(), first.cacheKey());
    QCOMPARE(store.page(5).items.constFirst().image, noise(50));
}

void TestPageStore::anItemWithoutAPictureHasNone()
{
    PageStore store({100, 100});
    store.append(pageWith(u"sem figura"_s));
    QVERIFY(store.page(0).items.constFirst().image.isNull());
}

QTEST_MAIN(TestPageStore)
#include "tst_pagestore.moc"
