#include "containers/ArrayData.h"
#include "containers/ArrayDiscard.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace KrCore {

/// Moves the elements from index `from` on, so that the first comes to `to`: up to open a gap of
/// undefined elements, down to close one over the elements in between. `plan` makes the new sparse
/// part and everything else that can fail; `commit` only moves.
///
/// Hidden sparse elements keep their places, except those that the array grows over: they would
/// appear in place of undefined elements.
class Array::Shift {
public:
    Shift(Data& data, unsigned int from, unsigned int to, unsigned int newLength)
        : data_(data), from_(from), to_(to), newLength_(newLength), used_(data.used()) {}
    Shift(const Shift&) = delete;
    Shift& operator=(const Shift&) = delete;
    ~Shift();

    void plan();
    void commit() noexcept;

private:
    enum class Fate { Stays, BecomesDense, Goes };

    Fate fateOf(long long key, unsigned int& target) const;
    void planSparse();
    void planOverflow();
    void moveSparse(Discard& discard) noexcept;

    Data& data_;
    const unsigned int from_;
    const unsigned int to_;
    const unsigned int newLength_;
    const unsigned int used_;
    unsigned int kept_ = 0;    ///< Dense elements that keep their places,
    unsigned int moving_ = 0;  ///< that move,
    unsigned int staying_ = 0; ///< of these, that stay dense,
    unsigned int dropped_ = 0; ///< that go.
    unsigned int newUsed_ = 0;
    int sparseDropped_ = 0;
    std::unique_ptr<SparseArray> sparse_; ///< The sparse part to be; null when there is none.
    std::unique_ptr<Discard> discard_;
};

Array::Shift::~Shift() {
    if (!sparse_) return;
    // Not committed: only the elements made for the overflow are new, and they lie together.
    const unsigned int first = to_ + staying_;
    const unsigned int last = first + (moving_ - staying_);
    sparse_->removeIf([first, last](long long key, long long word) {
        if (key >= first && key < last) delete Data::toElement(word);
        return true;
    });
}

void Array::Shift::plan() {
    const unsigned int room = data_.denseLimit > to_ ? data_.denseLimit - to_ : 0;
    kept_ = std::min({from_, to_, used_});
    moving_ = used_ > from_ ? used_ - from_ : 0;
    staying_ = std::min(moving_, room);
    dropped_ = std::min(from_, used_) - kept_;
    newUsed_ = staying_ > 0 ? to_ + staying_ : kept_;
    if (data_.sparse || moving_ > staying_) {
        sparse_.reset(new SparseArray);
        planSparse();
        planOverflow();
    }
    discard_.reset(new Discard(dropped_, sparseDropped_));
    data_.reserveDense(newUsed_);
}

Array::Shift::Fate Array::Shift::fateOf(long long key, unsigned int& target) const {
    const auto index = static_cast<unsigned int>(key);
    target = index;
    if (index >= data_.length) return index < newLength_ ? Fate::Goes : Fate::Stays;
    if (index < from_) return index < to_ ? Fate::Stays : Fate::Goes;
    target = index - from_ + to_;
    return target < data_.denseLimit ? Fate::BecomesDense : Fate::Stays;
}

void Array::Shift::planSparse() {
    if (!data_.sparse) return;
    data_.sparse->visitItems([this](long long key, long long word) {
        unsigned int target = 0;
        switch (fateOf(key, target)) {
        case Fate::Stays:
            sparse_->set(target, word);
            break;
        case Fate::BecomesDense:
            newUsed_ = std::max(newUsed_, target + 1);
            break;
        case Fate::Goes:
            ++sparseDropped_;
            break;
        }
    });
}

/// Dense elements that move beyond the dense limit get a sparse place each.
void Array::Shift::planOverflow() {
    for (unsigned int index = from_ + staying_; index < used_; ++index) {
        if (!data_.dense->slots()[index].isDefined()) continue;
        std::unique_ptr<Variant> element(new Variant);
        sparse_->set(index - from_ + to_, Data::toWord(element.get()));
        (void)element.release();
    }
}

void Array::Shift::commit() noexcept {
    Discard& discard = *discard_;
    if (DenseBlock* dense = data_.dense) {
        Variant* slots = dense->slots();
        for (unsigned int index = from_ + staying_; index < used_; ++index) {
            const long long word = sparse_->find(index - from_ + to_);
            if (word) {
                Data::relocate(Data::toElement(word), slots + index, 1);
            } else {
                slots[index].~Variant();
            }
        }
        discard.takeDense(slots + kept_, dropped_);
        Data::relocate(slots + to_, slots + from_, staying_);
        for (unsigned int index = kept_; staying_ > 0 && index < to_; ++index) {
            new (slots + index) Variant();
        }
        dense->used = staying_ > 0 ? to_ + staying_ : kept_;
    }
    data_.growDense(newUsed_); // Within what was reserved.
    moveSparse(discard);
    data_.length = newLength_;
}

void Array::Shift::moveSparse(Discard& discard) noexcept {
    if (!sparse_) return;
    if (data_.sparse) {
        data_.sparse->removeIf([this, &discard](long long key, long long word) {
            unsigned int target = 0;
            const Fate fate = fateOf(key, target);
            if (fate == Fate::BecomesDense) {
                Data::relocate(data_.dense->slots() + target, Data::toElement(word), 1);
                Heap::operator delete(Data::toElement(word));
            } else if (fate == Fate::Goes) {
                discard.takeSparse(word);
            }
            return true;
        });
        delete data_.sparse;
    }
    data_.sparse = sparse_.release();
}

void Array::insertAt(unsigned int index, unsigned int count) {
    const unsigned int length = data_->length;
    if (count == 0 || count > Data::maxLength - length) return;
    const unsigned int from = std::min(index, length);
    makeUnique();
    Shift shift(*data_, from, from + count, length + count);
    shift.plan();
    shift.commit();
}

void Array::removeAt(unsigned int index, unsigned int count) {
    const unsigned int length = data_->length;
    if (index >= length || count == 0) return;
    const unsigned int removed = std::min(count, length - index);
    if (removed == length) {
        erase();
        return;
    }
    makeUnique();
    Shift shift(*data_, index + removed, index, length - removed);
    shift.plan();
    shift.commit();
}

void Array::deleteAt(unsigned int index) {
    if (!isDefined(index)) return;
    makeUnique();
    const Variant former(std::move(*data_->find(index)));
}

} // namespace KrCore
