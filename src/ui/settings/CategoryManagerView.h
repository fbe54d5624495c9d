#pragma once

#include "ui/settings/CategoryRows.h"

#include <QObject>

#include <memory>

/// The settings page on which the user lists, adds, edits, orders and deletes categories. Every change is
/// saved at once; one that cannot be saved waits for the next, without a word. Main thread only.
class CategoryManagerView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings")
    Q_PROPERTY(CategoryRows *categories READ categories CONSTANT)
    Q_PROPERTY(QVariantList palette READ palette CONSTANT)
    Q_PROPERTY(bool isAddingNew READ isAddingNew NOTIFY formChanged)
    Q_PROPERTY(bool isEditing READ isEditing NOTIFY formChanged)
    Q_PROPERTY(QString newName READ newName WRITE setNewName NOTIFY formChanged)
    Q_PROPERTY(QString newColorHex READ newColorHex WRITE setNewColorHex NOTIFY formChanged)
    Q_PROPERTY(QString newIcon READ newIcon NOTIFY formChanged)
    Q_PROPERTY(bool canSave READ canSave NOTIFY formChanged)

public:
    /// The context must outlive it.
    explicit CategoryManagerView(ModelContext &modelContext);
    ~CategoryManagerView() override;

    CategoryRows *categories() { return &m_categories; }
    /// The colours to choose from: objects with a `value`, "#RRGGBB", and the `text` that names it.
    QVariantList palette() const;

    bool isAddingNew() const { return m_isAddingNew; }
    bool isEditing() const { return m_editingCategory != nullptr; }
    const std::shared_ptr<ClipCategory> &editingCategory() const { return m_editingCategory; }
    const QString &newName() const { return m_newName; }
    void setNewName(const QString &name);
    const QString &newColorHex() const { return m_newColorHex; }
    void setNewColorHex(const QString &hex);
    const QString &newIcon() const { return m_newIcon; }
    /// Whether the form's name is not empty; blanks are a name.
    bool canSave() const { return !m_newName.isEmpty(); }

    /// Opens the form for a new category.
    Q_INVOKABLE void addNew();
    /// Opens the form for a category; rows are those of `categories`.
    Q_INVOKABLE void edit(int row);
    /// Saves what the open form holds, and closes it.
    Q_INVOKABLE void saveForm();
    Q_INVOKABLE void cancelForm();

    /// Swaps places with the one before (-1) or the next one (+1); nothing at either end of the list.
    Q_INVOKABLE void moveCategory(int row, int direction);
    /// Entries that are assigned to it keep the assignment, which then means nothing.
    Q_INVOKABLE void deleteCategory(int row);
    /// Adds the default categories to those that there are.
    Q_INVOKABLE void resetDefaultCategories();

Q_SIGNALS:
    void formChanged();

private:
    void saveNewCategory();
    void saveEditedCategory();
    void save();

    ModelContext &m_modelContext;
    CategoryRows m_categories;
    bool m_isAddingNew = false;
    std::shared_ptr<ClipCategory> m_editingCategory;
    QString m_newName;
    QString m_newColorHex;
    QString m_newIcon;
};
