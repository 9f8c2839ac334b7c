// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/layout.h"

namespace {

using Visit = std::function<void(const Expression &expression, int line)>;

void visitOptional(const std::optional<Expression> &expression, int line, const Visit &visit)
{
    if (expression)
        visit(*expression, line);
}

void visitText(const TextTemplate &text, int line, const Visit &visit)
{
    for (const TextTemplate::Part &part : text.parts()) {
        if (part.expression)
            visit(*part.expression, line);
    }
}

} // namespace

void Layout::forEachExpression(const Band &band, const Visit &visit)
{
    visitOptional(band.condition, band.line, visit);
    for (const Item &item : band.items) {
        visitOptional(item.condition, item.line, visit);
        visitOptional(item.value, item.line, visit);
        visitText(item.text, item.line, visit);
    }
    for (const TextLine &line : band.lines) {
        visitOptional(line.condition, line.line, visit);
        visitText(line.text, line.line, visit);
    }
}
