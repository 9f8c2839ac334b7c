// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/emptyscreens.h"

#include "module/host_services/classregistry.h"
#include "module/recordbar.h"
#include "module/recordform.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QSize nextSize;

class EmptyForm : public TForm
{
protected:
    void FormCreate() override { resize(nextSize); }
};

/// With the bars that every screen of its kind has, over a panel without controls.
class EmptyRecordForm : public TRecordForm
{
protected:
    void FormCreate() override
    {
        resize(nextSize);
        auto *layout = new QVBoxLayout(this);
        auto *bars = new RecordBar(this);
        bars->setObjectName(u"Barras"_s);
        layout->addWidget(bars);
        auto *panel = new QWidget(this);
        panel->setObjectName(u"PainelDados"_s);
        layout->addWidget(panel, 1);
        bars->showConfirmation(false);
    }
    LogTexts logTexts() const override { return {}; }
    QString recordNumber() const override { return {}; }
    QWidget *firstField(bool) const override { return nullptr; }
    void search() override { }
};

template <class Form> QWidget *create()
{
    auto *form = new Form;
    form->Create();
    return form;
}

} // namespace

void EmptyScreens::registerClasses()
{
    ClassRegistry::RegisterClass({u"EmptyForm"_s, u"Empty"_s, create<EmptyForm>});
    ClassRegistry::RegisterClass({u"EmptyRecordForm"_s, u"Empty"_s, create<EmptyRecordForm>});
}

void EmptyScreens::unregisterClasses()
{
    ClassRegistry::UnRegisterClass(u"EmptyForm"_s);
    ClassRegistry::UnRegisterClass(u"EmptyRecordForm"_s);
}

QString EmptyScreens::classLike(const QObject *screen)
{
    return screen->inherits("TRecordForm") ? u"EmptyRecordForm"_s : u"EmptyForm"_s;
}

void EmptyScreens::setSize(QSize size)
{
    nextSize = size;
}
