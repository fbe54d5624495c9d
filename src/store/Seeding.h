#pragma once

class ModelContainer;

/// Fills an empty store with the default categories and says so; does nothing when it holds any category, or
/// when there is no store.
void seedDefaultCategories(ModelContainer *container);

/// The same for the default paste templates.
void seedDefaultTemplates(ModelContainer *container);
