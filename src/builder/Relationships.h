#pragma once

namespace rose {

/// Each begins a relationship of the current class, which is its subtype, its realization or its client.
void CreateGeneralization();
void CreateRealization();
void CreateDependency();

} // namespace rose
