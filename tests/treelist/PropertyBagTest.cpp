// The control's persisted properties through the JSON property bag.

#include "ErrorOf.h"
#include "TreeListFixture.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <functional>

namespace {

class PropertyBagTest : public TreeListFixture {};

TEST_F(PropertyBagTest, DefaultsWriteNothingAndEveryKeyRoundTripsThroughAFile) {
    PropertyBag bag;
    list->WriteProperties(bag);
    EXPECT_EQ(bag.count(), 0) << QJsonDocument(bag.json()).toJson().toStdString();
    vkTreeList loaded(nullptr, host.get());
    loaded.ReadProperties(bag);
    EXPECT_EQ(std::tuple(loaded.Headers(), loaded.Columns(), loaded.Rows()),
              std::tuple(qint16(1), 1, 0));
    EXPECT_EQ(loaded.HeaderCell(lslcData, 1, 1).toString(), "Header1");

    // Every persisted key but the default column width is a property of the same name: a host
    // (or a form) puts them by name. The font goes through a QFont, the image list through the
    // name the host gave it.
    auto images = std::make_shared<lsImageList>();
    host->registerImageList("icons", images);
    QFont font("DejaVu Serif");
    font.setPointSizeF(11);
    font.setItalic(true);
    // clang-format off
    const std::pair<const char *, QVariant> puts[] = {
        {"AutoRedraw", false}, {"Columns", 3}, {"EditMode", lsEditComboBox},
        {"FocusType", lsSelectFullRow}, {"Headers", 2}, {"RowHeight", 22}, {"Enabled", false},
        {"Appearance", lsAppFlat}, {"BackColor", 0x00C0FFEEu}, {"Font", font},
        {"ForeColor", 0x00112233u}, {"ImageList", "icons"}, {"LineStyle", lsLineDotted},
        {"MultiSelect", true}, {"AutoSelectNew", false}, {"ExpandOnDoubleClick", false},
        {"ComponentVersion", "9.99.9999"}};
    // clang-format on
    for (const auto &[key, value] : puts) {
        const QMetaObject *meta = list->metaObject();
        const QMetaProperty property = meta->property(meta->indexOfProperty(key));
        QSignalSpy notified(list.get(), property.notifySignal());
        EXPECT_TRUE(property.write(list.get(), value)) << key;
        EXPECT_EQ(notified.count(), 1) << key;
    }
    EXPECT_EQ(std::tuple(list->Font()->Name(), list->Font()->Size(), list->Font()->Italic()),
              std::tuple(QStringLiteral("DejaVu Serif"), 11.0, true));

    QTemporaryDir dir;
    const QString path = dir.filePath("layout.json");
    PropertyBag saved;
    list->WriteProperties(saved);
    ASSERT_TRUE(saved.save(path));
    EXPECT_EQ(saved.count(), 16); // all but ColumnWidth and ComponentVersion, left at defaults
    ASSERT_TRUE(bag.load(path));
    loaded.ReadProperties(bag);
    // Writing the loaded control again gives the same bag, so every key reached its field;
    // a few spot checks make sure the values were applied and not just carried.
    EXPECT_EQ(loaded.HeaderCell(lslcData, 2, 3).toString(), "Header3");
    EXPECT_FALSE(loaded.Enabled());
    EXPECT_TRUE(loaded.Font()->Italic());
    EXPECT_EQ(loaded.ImageList(), images);
    EXPECT_EQ(loaded.BackColor(), 0x00C0FFEEu);
    PropertyBag again;
    loaded.WriteProperties(again);
    EXPECT_EQ(again.json(), saved.json());
    list->setProperty("ImageList", "unknown");
    EXPECT_EQ(list->ImageList(), nullptr);
}

TEST_F(PropertyBagTest, ALoadGivesEveryHeaderAndDataRowTheLoadedColumns) {
    // Whatever the control held before: new, loaded before, filled with rows.
    const auto layout = [](qint32 columns, qint32 headers) {
        PropertyBag bag;
        EXPECT_TRUE(bag.fromJson(QStringLiteral(R"({"Columns": %1, "Headers": %2})")
                                     .arg(columns)
                                     .arg(headers)
                                     .toUtf8()));
        return bag;
    };
    const std::function<void()> before[] = {[] {}, [&] { list->ReadProperties(layout(5, 3)); },
                                            [&] {
                                                list->setColumns(3);
                                                addFlatRows(10);
                                            }};
    const std::pair<qint32, qint16> loads[] = {{3, 2}, {1, 3}, {6, 0}, {2, 1}};
    for (size_t b = 0; b < std::size(before); ++b)
        for (const auto &[columns, headers] : loads) {
            SCOPED_TRACE(testing::Message() << "before " << b << ", " << columns << " columns, "
                                            << headers << " header rows");
            makeControl(true);
            before[b]();
            list->ReadProperties(layout(columns, headers));
            EXPECT_EQ(std::tuple(list->Columns(), list->Headers()), std::tuple(columns, headers));
            for (lsNodes *nodes : {list->rows(), list->headers()})
                for (const lsNodePtr &row : *nodes)
                    ASSERT_EQ(row->borrowCells().Count(), columns);
            if (list->Rows() + headers == 0)
                continue;
            for (qint32 c = 1; c <= columns; ++c)
                EXPECT_GT(list->ColumnWidth(c), 0) << c;
            list->setColumnWidth(columns, 1500);
            EXPECT_EQ(list->ColumnWidth(columns), 1500);
        }
}

TEST_F(PropertyBagTest, BadInputFailsCleanlyAndLosesNothing) {
    QTemporaryDir dir;
    const QString path = dir.filePath("layout.json");
    PropertyBag good;
    good.WriteProperty("RowHeight", QVariant::fromValue<qint16>(20),
                       QVariant::fromValue<qint16>(18));
    ASSERT_TRUE(good.save(path));

    // A malformed file leaves the bag as it was.
    QFile bad(dir.filePath("bad.json"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("{ \"RowHeight\": 20,");
    bad.close();
    PropertyBag bag = good;
    QString error;
    EXPECT_FALSE(bag.load(bad.fileName(), &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(bag.json(), good.json());

    // A save that cannot be done leaves the old file intact.
    EXPECT_FALSE(good.save(dir.filePath("missing/dir/layout.json")));
    PropertyBag reread;
    ASSERT_TRUE(reread.load(path));
    EXPECT_EQ(reread.json(), good.json());

    // Values of the wrong type fail the load with type mismatch (13); too large ones overflow.
    using E = TreeListError;
    // clang-format off
    const std::pair<const char *, int> cases[] = {
        {R"({"RowHeight": "tall"})", E::TypeMismatch}, {R"({"AutoRedraw": 1})", E::TypeMismatch},
        {R"({"Columns": 2.5})", E::TypeMismatch}, {R"({"Font": 12})", E::TypeMismatch},
        {R"({"Font": {"Name": "DejaVu Sans", "Size": "big"}})", E::TypeMismatch},
        {R"({"Headers": 40000})", E::Overflow}, {R"({"Columns": 2000000000})", E::Overflow},
        {R"({"Headers": 30000, "Columns": 30000})", E::OutOfMemory}};
    // clang-format on
    list->setColumns(2);
    list->AddItem(emptyText(), lsNext, "A", "Alpha");
    for (const auto &[json, error] : cases) {
        PropertyBag typed;
        ASSERT_TRUE(typed.fromJson(json));
        EXPECT_EQ(errorOf([&] { list->ReadProperties(typed); }), error) << json;
        // Nothing of the control changed and it keeps working.
        EXPECT_EQ(std::tuple(list->RowHeight(), list->Columns(), list->Rows()),
                  std::tuple(18, 2, 1))
            << json;
    }
    EXPECT_EQ(list->AddItem("A", lsChild, "B", "Beta"), 2);

    // The error names the file, when there is one, and the property.
    QFile huge(dir.filePath("huge.json"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    huge.write(R"({"RowHeight": 20, "Columns": 2000000000})");
    huge.close();
    const std::pair<QString, QString> named[] = {
        {huge.fileName(), huge.fileName() + R"(: "Columns": Overflow)"},
        {R"({"RowHeight": "tall"})", R"("RowHeight": Type mismatch)"},
        {R"({"Font": {"Size": "big"}})", R"("Font": Type mismatch)"}};
    for (const auto &[source, text] : named) {
        PropertyBag from;
        ASSERT_TRUE(source.startsWith('{') ? from.fromJson(source.toUtf8()) : from.load(source));
        try {
            list->ReadProperties(from);
            ADD_FAILURE() << "loaded " << source.toStdString();
        } catch (const TreeListError &e) {
            EXPECT_EQ(e.description(), text);
        }
    }
}

TEST_F(PropertyBagTest, WideValuesKeepTheirBitsAndNarrowPutsFailLoudly) {
    // Enumerated properties are 32-bit and stored as given; the file keeps every bit, and a
    // value whose low 16 bits equal the default is not mistaken for it.
    const struct Wide {
        const char *key;
        void (vkTreeList::*put)(qint32);
        qint32 (vkTreeList::*get)() const;
        qint32 value;
    } wide[] = {
        {"EditMode", &vkTreeList::setEditMode, &vkTreeList::EditMode, 70000},
        {"LineStyle", &vkTreeList::setLineStyle, &vkTreeList::LineStyle, 65537},
        {"FocusType", &vkTreeList::setFocusType, &vkTreeList::FocusType, -70000},
    };
    for (const Wide &w : wide)
        (list.get()->*w.put)(w.value);
    PropertyBag bag;
    list->WriteProperties(bag);
    vkTreeList loaded(nullptr, host.get());
    loaded.ReadProperties(bag);
    for (const Wide &w : wide) {
        EXPECT_EQ(bag.json().value(w.key).toDouble(), w.value) << w.key;
        EXPECT_EQ((loaded.*w.get)(), w.value) << w.key;
    }

    // Colours load from the signed and the unsigned form of the same 32 bits.
    for (const char *json : {R"({"BackColor": -2147483643, "ForeColor": 2147483656})",
                             R"({"BackColor": 2147483653, "ForeColor": -2147483640})"}) {
        ASSERT_TRUE(bag.fromJson(json));
        loaded.ReadProperties(bag);
        EXPECT_EQ(loaded.BackColor(), 0x80000005u) << json;
        EXPECT_EQ(loaded.ForeColor(), 0x80000008u) << json;
    }

    // Puts of 16-bit values take the host's 32 bits and fail before anything changes.
    recordChanges();
    const struct Narrow {
        const char *name;
        std::function<void()> put;
    } narrow[] = {
        {"Headers 40000", [&] { list->setHeaders(40000); }},
        {"Columns 40000", [&] { list->setColumns(40000); }},
        {"Headers -32769", [&] { list->setHeaders(-32769); }},
        {"Appearance 70000", [&] { list->setAppearance(70000); }},
        {"ScaleMode 32768", [&] { list->setScaleMode(32768); }},
    };
    for (const Narrow &n : narrow)
        EXPECT_EQ(errorOf(n.put), TreeListError::Overflow) << n.name;
    EXPECT_TRUE(changed.isEmpty());
    EXPECT_EQ(list->Headers(), 1);
    EXPECT_EQ(list->Appearance(), lsApp3D);
    EXPECT_EQ(list->ScaleMode(), 1);

    // Enabled is the control's own state: a disabled parent neither changes nor notifies it.
    QWidget parent;
    vkTreeList child(&parent, host.get());
    child.InitProperties();
    recordChanges(&child);
    parent.setEnabled(false);
    EXPECT_TRUE(child.Enabled());
    PropertyBag saved;
    child.WriteProperties(saved);
    EXPECT_FALSE(saved.contains("Enabled"));
    child.setEnabled(false);
    parent.setEnabled(true);
    EXPECT_FALSE(child.Enabled());
    child.WriteProperties(saved);
    EXPECT_FALSE(saved.json().value("Enabled").toBool(true));
    EXPECT_EQ(changed, QStringList({"Enabled"}));
}

TEST_F(PropertyBagTest, PutsNotifyWithTheBagKeyAndRepaintOnlyWhereTheyShould) {
    recordChanges();
    addFlatRows(2);

    // RowHeight takes 16..255 only, silently.
    for (int h : {15, 256, -1})
        list->setRowHeight(h);
    EXPECT_EQ(list->RowHeight(), 18);
    EXPECT_TRUE(changed.isEmpty());
    list->setRowHeight(16);
    list->setRowHeight(255);
    EXPECT_EQ(list->RowHeight(), 255);
    EXPECT_EQ(changed, QStringList({"RowHeight", "RowHeight"}));

    // BackColor does not repaint: the composed frame keeps the old background.
    list->setRowHeight(18);
    const auto corner = [&] { return frame().pixel(frame().width() - 5, frame().height() - 5); };
    const QRgb oldBack = corner();
    list->setBackColor(0x000000FF);
    EXPECT_EQ(corner(), oldBack);
    list->Refresh();
    EXPECT_EQ(corner(), qRgb(255, 0, 0));

    // AutoRedraw off keeps the frame; turning it on repaints at once.
    changed.clear();
    list->setAutoRedraw(false);
    list->setListCell(lslcData, 1, 1, "Changed");
    const QImage frozen = frame();
    list->setBackColor(0x0000FF00);
    list->Refresh();
    EXPECT_EQ(frame(), frozen);
    list->setAutoRedraw(true);
    EXPECT_NE(frame(), frozen);
    EXPECT_EQ(changed, QStringList({"AutoRedraw", "BackColor", "AutoRedraw"}));
}

} // namespace
