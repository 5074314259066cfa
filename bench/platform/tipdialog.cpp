#include <tipdialog.h>

#include "../headunit.h"

void TipDialog::showMessage(const QString &text, int type, bool flag)
{
    bench::HeadUnit::current().report({bench::calls::showMessage, {text, type, flag}});
}
