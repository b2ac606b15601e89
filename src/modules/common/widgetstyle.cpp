#include "modules/common/widgetstyle.h"

#include <QAbstractSpinBox>
#include <QFont>
#include <QLineEdit>
#include <QString>

void setStyleIfChanged(QWidget &widget, const QString &style)
{
    if (widget.styleSheet() != style)
        widget.setStyleSheet(style);
}

void forgetStyleOfField(const QAbstractSpinBox &box)
{
    auto *field = box.findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    if (field && !box.styleSheet().isEmpty())
        field->setStyleSheet(QStringLiteral("QLabel {}")); // says nothing of the field
}

void setFontIfChanged(QWidget &widget, const QFont &font)
{
    if (widget.font() != font)
        widget.setFont(font);
}
