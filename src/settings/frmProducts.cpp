#include "settings/frmProducts.h"

#include "base/Deployment.h"
#include "controls/HandCursor.h"
#include "controls/LinkLabel.h"
#include "platform/Shell.h"

frmProducts::frmProducts(const Desktop &desktop) : FormOf(desktop)
{
    setupUi(this);
    setCancelButton(cmdOK);
    for (int i = 0; const auto &[caption, address] : Deployment::RelatedLinks) {
        auto *link = new LinkLabel(this);
        link->setObjectName(QStringLiteral("lblLink_%1").arg(i));
        link->setText(address);
        link->setAccessibleName(caption);
        SetHandCursor(link);
        attach(link, &LinkLabel::clicked, [this, address = address] { this->desktop().shell.open(address); });
        layoutLinks->addWidget(new QLabel(caption), i, 0);
        layoutLinks->addWidget(link, i, 1, Qt::AlignLeft);
        ++i;
    }
    attach(cmdOK, &QPushButton::clicked, [this] { unload(); });
    cmdOK->setFocus();
    centerOnScreen();
}
