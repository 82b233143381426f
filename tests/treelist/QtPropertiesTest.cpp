// The controls as Qt's meta-object system sees them: properties by name with their
// notifications, methods called by name, and a control
// made the way Qt makes widgets.

#include "TreeListFixture.h"
#include "lsEdit.h"
#include "lsEditTypes.h"

#include <QSignalSpy>

namespace {

using QtPropertiesTest = TreeListFixture;

TEST_F(QtPropertiesTest, MethodsAreCalledByName) {
    // Every persisted key is put by name, with its notification, in the property bag's round trip.
    bool cleared = true;
    ASSERT_TRUE(QMetaObject::invokeMethod(list.get(), "AddItem"));
    ASSERT_TRUE(QMetaObject::invokeMethod(list.get(), "setListCell", Q_ARG(qint32, lslcData),
                                          Q_ARG(qint32, 1), Q_ARG(qint32, 1),
                                          Q_ARG(QVariant, QStringLiteral("by name"))));
    EXPECT_EQ(list->ListCell(lslcData, 1, 1), "by name");
    ASSERT_TRUE(QMetaObject::invokeMethod(list.get(), "Clear", Q_RETURN_ARG(bool, cleared)));
    EXPECT_FALSE(cleared);
    EXPECT_EQ(list->Rows(), 0);

    lsEdit editor;
    QSignalSpy valueChanged(&editor, &lsEdit::ValueChanged);
    editor.setProperty("Value", QStringLiteral("Green"));
    EXPECT_EQ(editor.Value(), "Green");
    EXPECT_EQ(valueChanged.count(), 1);
    EXPECT_TRUE(editor.property("Mode").isValid());
}

TEST_F(QtPropertiesTest, QtMadeControlsStartAsNew) {
    // new with a parent and nothing more: a new instance with its header row.
    QWidget window;
    auto *made = new vkTreeList(&window);
    EXPECT_EQ(std::tuple(made->Headers(), made->Columns(), made->headers()->Count()),
              std::tuple(qint16(1), 1, 1));
    EXPECT_GT(made->sizeHint().height(), made->minimumSizeHint().height());
    EXPECT_GE(made->sizeHint().width(), made->minimumSizeHint().width());
}

} // namespace
