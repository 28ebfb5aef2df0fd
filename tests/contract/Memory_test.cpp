#include "platform/Memory.h"

#include "contract/ContractTest.h"

namespace {

using MemoryContract = ContractTest;

}  // namespace

TEST_F(MemoryContract, Allocate_GivesZeroedBytesOfExactlyThatSize) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{7}, std::size_t{16}, std::size_t{300'001}}) {
        const DataHandle block = memory.Allocate(size);
        ASSERT_NE(block, DataHandle::None);
        EXPECT_EQ(memory.Size(block), size);
        EXPECT_EQ(BytesOf(block), std::string(size, '\0'));
        memory.Free(block);
    }
}

TEST_F(MemoryContract, Lock_NestsAndKeepsTheContent) {
    const DataHandle block = MakeBlock("abc");
    void* first = memory.Lock(block);
    EXPECT_EQ(memory.Lock(block), first);
    static_cast<char*>(first)[1] = 'X';
    memory.Unlock(block);
    EXPECT_EQ(static_cast<char*>(first)[1], 'X');  // one lock is left
    memory.Unlock(block);
    EXPECT_EQ(BytesOf(block), "aXc");
    memory.Free(block);
}

TEST_F(MemoryContract, Lock_GivesNothingForWhatIsNoBlock) {
    EXPECT_EQ(memory.Lock(DataHandle::None), nullptr);
    EXPECT_EQ(memory.Size(DataHandle::None), 0u);
    memory.Free(DataHandle::None);
    const DataHandle empty = memory.Allocate(0);
    EXPECT_EQ(memory.Size(empty), 0u);
    EXPECT_EQ(memory.Lock(empty), nullptr);
    memory.Free(empty);
}
