/* What PHP and the extension ask of an operating system and a browser doesn't have. */

#include <errno.h>
#include <pthread.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <sys/auxv.h>
#include <sys/mman.h>
#include <sys/types.h>
#include <ucontext.h>

/* PHP's allocator takes memory in multiples of this, and aligned to it. */
#define CHUNK ((size_t) 2 << 20)

/* Whether memory handed out begins in this chunk of the address space. */
static bool is_start[((size_t) 1 << 31) / CHUNK * 2];

/* Aligned memory at once: the C library's mmap leaves it to PHP to give the surplus back, which can't be done here, since
 * memory is given back as a whole. No files, and no stacks, so that a Fiber can't be started. */
void* mmap(void* address, size_t size, int protection, int flags, int file, off_t offset) {
	static _Alignas(2) char elsewhere[2];
	void* memory;
	(void) protection;
	(void) offset;
	/* PHP gives back what doesn't lie where it should extend something, and goes another way. */
	if (address) {
		return elsewhere + 1;
	}
	if (file != -1 || (flags & MAP_STACK)) {
		errno = ENODEV;
		return MAP_FAILED;
	}
	if (posix_memalign(&memory, CHUNK, size)) {
		errno = ENOMEM;
		return MAP_FAILED;
	}
	is_start[(uintptr_t) memory / CHUNK] = true;
	return memset(memory, 0, size);
}

/* The end of a mapping stays until the rest is given back. */
int munmap(void* address, size_t size) {
	(void) size;
	if ((uintptr_t) address % CHUNK == 0 && is_start[(uintptr_t) address / CHUNK]) {
		is_start[(uintptr_t) address / CHUNK] = false;
		free(address);
	}
	return 0;
}

/* The browser's own stack, which nobody can ask for its size, may end long before that of the module, where only what
 * has an address lies: so nesting gets no more than this of the latter. */
#define USABLE_STACK ((uintptr_t) 512 << 10)

static uintptr_t stack_top;

/* No frame of a request is above this one. */
__attribute__((constructor)) static void find_stack(void) {
	stack_top = (uintptr_t) __builtin_frame_address(0);
}

int pthread_attr_getstack(const pthread_attr_t* restrict attributes, void** restrict lowest, size_t* restrict size) {
	uintptr_t here = (uintptr_t) __builtin_frame_address(0);
	uintptr_t usable = stack_top - USABLE_STACK;
	(void) attributes;
	/* Who is below it already has nothing left, but is on this stack all the same. */
	*lowest = (void*) (usable < here ? usable : here);
	*size = stack_top - (uintptr_t) *lowest;
	return 0;
}

unsigned long getauxval(unsigned long type) {
	(void) type;
	return 0;
}

int getdtablesize(void) {
	return 1024;
}

/* Never reached, since mmap has no stack for a Fiber. */
int getcontext(ucontext_t* context) {
	(void) context;
	abort();
}

void makecontext(ucontext_t* context, void (*function)(void), int count, ...) {
	(void) context;
	(void) function;
	(void) count;
	abort();
}

int swapcontext(ucontext_t* restrict from, const ucontext_t* restrict to) {
	(void) from;
	(void) to;
	abort();
}
