// The allocator of the whole process, that of loaded libraries included, which can be made to fail;
// and the start of threads, which can be, too.
#pragma once

namespace allocations {

// From now on the allocation of this number (from 1) fails; forGood: all behind it, too.
void fail(long number, bool forGood);
// No allocation fails any more. Returns how many there were since fail().
long stop();

// How many threads can still be started; -1: as many as are wanted.
void limitThreads(int count);
// Threads started since limitThreads().
int threadsStarted();

}  // namespace allocations
