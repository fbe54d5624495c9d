#include "ui/settings/CategoryManagerView.h"

#include "store/CategoryColors.h"
#include "ui/language/DisplayName.h"

#include <QCoreApplication>
#include <QRandomGenerator>

namespace
{

const QString TagIcon = QStringLiteral("tag.fill");

constexpr auto ColorContext = "CategoryColor";

// For the translator's list; the names themselves are the palette's own.
[[maybe_unused]] constexpr const char *TranslatedColors[] = {
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Blue"),
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Green"),
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Orange"),
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Purple"),
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Red"),
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Pink"),
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Teal"),
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Yellow"),
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Indigo"),
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Brown"),
    //: The name of a colour for a category.
    QT_TRANSLATE_NOOP("CategoryColor", "Mint"),
    //: The name of a colour for a category: a bluish grey.
    QT_TRANSLATE_NOOP("CategoryColor", "Steel"),
};

QString firstColor()
{
    const auto &palette = CategoryColors::palette();
    return palette.empty() ? QStringLiteral("#3F78F3") : palette.front().hex;
}

QString randomColor()
{
    const auto &palette = CategoryColors::palette();
    if (palette.empty())
        return firstColor();
    return palette[QRandomGenerator::system()->bounded(quint32(palette.size()))].hex;
}

} // namespace

CategoryManagerView::CategoryManagerView(ModelContext &modelContext)
    : m_modelContext(modelContext)
    , m_categories(modelContext)
    , m_newColorHex(firstColor())
    , m_newIcon(TagIcon)
{
}

CategoryManagerView::~CategoryManagerView() = default;

QVariantList CategoryManagerView::palette() const
{
    QVariantList colors;
    for (const CategoryColors::Entry &entry : CategoryColors::palette()) {
        const QString name = QCoreApplication::translate(ColorContext, entry.name.toUtf8().constData());
        colors.append(QVariantMap{{QStringLiteral("value"), entry.hex}, {QStringLiteral("text"), name}});
    }
    return colors;
}

void CategoryManagerView::setNewName(const QString &name)
{
    m_newName = name;
    Q_EMIT formChanged();
}

void CategoryManagerView::setNewColorHex(const QString &hex)
{
    m_newColorHex = hex;
    Q_EMIT formChanged();
}

void CategoryManagerView::addNew()
{
    m_isAddingNew = true;
    m_newName.clear();
    m_newColorHex = randomColor();
    m_newIcon = TagIcon;
    Q_EMIT formChanged();
}

void CategoryManagerView::edit(int row)
{
    const auto category = m_categories.record(row);
    if (!category)
        return;
    m_newName = displayName(*category);
    m_newColorHex = category->colorHex();
    m_newIcon = category->icon();
    m_editingCategory = category;
    Q_EMIT formChanged();
}

void CategoryManagerView::saveForm()
{
    if (!canSave())
        return;
    if (m_editingCategory)
        saveEditedCategory();
    else if (m_isAddingNew)
        saveNewCategory();
}

void CategoryManagerView::cancelForm()
{
    m_isAddingNew = false;
    m_editingCategory.reset();
    Q_EMIT formChanged();
}

void CategoryManagerView::saveNewCategory()
{
    m_modelContext.insert(
        std::make_shared<ClipCategory>(m_newName, m_newColorHex, m_newIcon, m_categories.rowCount(), false));
    save();
    m_isAddingNew = false;
    Q_EMIT formChanged();
}

void CategoryManagerView::saveEditedCategory()
{
    m_editingCategory->setName(storedName(*m_editingCategory, m_newName));
    m_editingCategory->setColorHex(m_newColorHex);
    m_editingCategory->setIcon(m_newIcon);
    save();
    m_editingCategory.reset();
    Q_EMIT formChanged();
}

void CategoryManagerView::moveCategory(int row, int direction)
{
    const auto category = m_categories.record(row);
    const auto other = m_categories.record(row + direction);
    if (!category || !other)
        return;
    const qint64 sortOrder = category->sortOrder();
    category->setSortOrder(other->sortOrder());
    other->setSortOrder(sortOrder);
    save();
}

void CategoryManagerView::deleteCategory(int row)
{
    const auto category = m_categories.record(row);
    if (!category)
        return;
    m_modelContext.remove(category);
    save();
}

void CategoryManagerView::resetDefaultCategories()
{
    qint64 sortOrder = 0;
    for (const ClipCategory::Default &entry : ClipCategory::defaults()) {
        m_modelContext.insert(
            std::make_shared<ClipCategory>(entry.name, entry.colorHex, entry.icon, sortOrder++, true));
    }
    save();
}

void CategoryManagerView::save()
{
    (void)m_modelContext.save();
}
