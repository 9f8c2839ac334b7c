// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/reportdesk.h"

#include <QTemporaryDir>

class QenHost;

/// What a host prints, as files that are read back: the text of its pages and the barcodes on them.
///
/// With QEN_PAPER set to a folder, the files stay there to be looked at.
class Paper
{
public:
    /// Takes the host's reports from now on; the host must not print after the end of it.
    explicit Paper(QenHost &host);
    ~Paper();
    Q_DISABLE_COPY_MOVE(Paper)

    int count() const { return int(m_desk.files().size()); }
    QString file() const; ///< of the last report; fails the test when there is none
    int pages() const;
    /// The last report's text, as it stands on the page; of one page (from 1) or of all.
    QString text(int page = 0) const;
    /// The same, with runs of blanks as one: for sentences and rows.
    QString flatText(int page = 0) const;
    /// What a reader finds on a page, sorted: "CODE-128:00000001".
    QStringList barcodes(int page = 1) const;
    /// What goes to a printer of characters.
    QByteArray bytes() const;

private:
    QString folder() const;

    QenHost &m_host;
    QTemporaryDir m_folder;
    FolderDesk m_desk;
};
