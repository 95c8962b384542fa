#pragma once

#include "host/bridge/KelImportObserver.h"
#include "host/model/KelDeletionObserver.h"
#include "host/model/KelElementType.h"
#include "host/model/links/KelPointerHash.h"

#include <cstdint>
#include <span>
#include <tsl/robin_map.h>
#include <vector>

class KelObject;

namespace units {
class PieceMap;
}

namespace source {

/// A number for each object that an import has told of; 0 stands for none.
using ObjectNumber = std::uint32_t;

enum class EffectKind : std::uint8_t { made, named, changed, refused, gate };

/// A step that an import took because of something in its file; the functions of `KelImportObserver` say what it means.
struct Effect {
    std::uint64_t begin = 0; ///< offset of the keyword: in the file that the bridge read, after `locate` in `file`
    ObjectNumber object = 0;
    ObjectNumber other = 0;
    std::uint32_t file = 0; ///< index into `units::UnitTree::files`
    std::uint32_t used = 0; ///< bytes of the value
    std::uint32_t left = 0; ///< bytes of the value that were left out
    std::uint16_t rule = 0;
    EffectKind kind = EffectKind::made;
    KelImportReason why = KelImportReason::none;
    bool isOverwritten = false; ///< a later keyword of the kind gave the same field of the object another value
};

/// What became of an object that an import has told of.
struct Fate {
    KelObject* object = nullptr;                     ///< null once it was deleted
    KelElementType type{};                           ///< of the object
    ObjectNumber heir = 0;                           ///< the object that took its place
    ObjectNumber cause = 0;                          ///< of an object made by a repair: the one that was repaired
    ObjectNumber copy = 0;                           ///< of an attribute that was split: the first copy
    ObjectNumber linked = 0;                         ///< the object that it was last linked to by the file
    ObjectNumber obstacle = 0;                       ///< what was in its way when it was refused
    KelImportReason refusal = KelImportReason::none; ///< why it got no owner at first
    KelImportReason end = KelImportReason::none;     ///< why it was replaced or deleted
    bool isReplaced = false;                         ///< an heir took its place; of a different name when ...
    bool isRenamed = false;                          ///< ... this is set
    bool isDefaulted = false;                        ///< it got a type that the file does not give
    bool isPutIn = false;                            ///< text that is in no file made it
    bool isOnlyNamed = false;                        ///< a class without a definition in the logical view
    bool isNameCleared = false;                      ///< the tool had made up its name
};

/// Records what an import does, for those who ask afterwards. It hears of the imports on its thread while it lives,
/// and goes on to notice which objects are deleted. Owns no object. Takes 40 bytes for a step, and memory in
/// proportion to the objects that were made. Throws `std::bad_alloc`.
class Trace final : public KelImportObserver, private KelDeletionObserver {
public:
    Trace();

    /// To be called once, after the import: brings the effects into the order of the files' text, marks the overwritten
    /// ones, and forgets those of text that is in no file. `pieces` tells where the text that the bridge read comes
    /// from; null when it read the model's file itself.
    void locate(const units::PieceMap* pieces);

    /// In the order of the text after `locate`.
    [[nodiscard]] std::span<const Effect> getEffects() const { return effects_; }
    /// By number; the first stands for none.
    [[nodiscard]] std::span<const Fate> getFates() const { return fates_; }
    [[nodiscard]] const Fate& getFate(ObjectNumber number) const { return fates_[number]; }
    /// The number of the object or, if it is gone, of what took its place; 0 when nothing has.
    [[nodiscard]] ObjectNumber heirOf(ObjectNumber number) const;
    /// The object itself or what took its place; null when nothing has.
    [[nodiscard]] KelObject* find(ObjectNumber number) const { return fates_[heirOf(number)].object; }

    void made(const KelImportSource& by, KelObject& object) override;
    void named(const KelImportSource& by, KelObject& object) override;
    void changed(const KelImportSource& by, KelObject& object, KelObject* other, KelImportReason why) override;
    void refused(const KelImportSource& by, KelImportReason why, KelObject* object, KelObject* other) override;
    void gate(const KelImportSource& at, KelImportReason why) override;
    void repaired(KelObject& object, KelImportReason why, KelObject* other) override;
    void replaced(KelObject& object, KelImportReason why, KelObject& by) override;
    void removing(KelObject& object, KelImportReason why) noexcept override;

private:
    void deleting(KelObject& object) noexcept override;
    ObjectNumber numberOf(KelObject& object);
    ObjectNumber numberOf(KelObject* object) { return object != nullptr ? numberOf(*object) : 0; }
    void record(const KelImportSource& by, EffectKind kind, KelImportReason why, ObjectNumber object,
                ObjectNumber other);
    [[nodiscard]] bool replacesValue(const Effect& effect) const;
    void markOverwritten();

    std::vector<Effect> effects_;
    std::vector<Fate> fates_;
    tsl::robin_map<const KelObject*, ObjectNumber, KelPointerHash> numbers_; // of those that live
    const KelObject* lastObject_ = nullptr; // the one that was asked for last, as most are
    ObjectNumber lastNumber_ = 0;
    const KelObject* removed_ = nullptr;                   // the object that is being removed, ...
    KelImportReason removal_ = KelImportReason::withOwner; // ... and why
};

} // namespace source
