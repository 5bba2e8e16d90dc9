// Sending a message: the method is looked up with all arguments put aside, then jumped to.
#include "abi.h"

namespace kelvane::objc {
namespace {

Implementation methodFor(Class* of, Selector selector) {
  if (const Implementation method = find(of, selector)) return method;
  fail(std::string(of->data->flags & kMetaFlag ? "+[" : "-[") + of->data->name + " " + selector +
       "] is implemented by nobody");
}

struct Super {
  Object receiver;
  Class* current;
};

}  // namespace

extern "C" __attribute__((used)) Implementation kelvaneMethodFor(Object receiver,
                                                                 Selector selector) {
  return methodFor(*static_cast<Class**>(receiver), selector);
}

extern "C" __attribute__((used)) Implementation kelvaneSuperMethodFor(const Super* super,
                                                                      Selector selector) {
  return methodFor(super->current->superclass, selector);
}

}  // namespace kelvane::objc

// A message to nil answers nothing, in whatever register it is looked for; the compiler itself
// clears an answer that is larger.
asm(R"(
  .text
  .macro PUT_ASIDE
    push %rbp
    mov %rsp, %rbp
    sub $192, %rsp
    mov %rdi, (%rsp)
    mov %rsi, 8(%rsp)
    mov %rdx, 16(%rsp)
    mov %rcx, 24(%rsp)
    mov %r8, 32(%rsp)
    mov %r9, 40(%rsp)
    mov %rax, 48(%rsp)
    movups %xmm0, 64(%rsp)
    movups %xmm1, 80(%rsp)
    movups %xmm2, 96(%rsp)
    movups %xmm3, 112(%rsp)
    movups %xmm4, 128(%rsp)
    movups %xmm5, 144(%rsp)
    movups %xmm6, 160(%rsp)
    movups %xmm7, 176(%rsp)
  .endm
  .macro TAKE_BACK
    mov %rax, %r11
    mov (%rsp), %rdi
    mov 8(%rsp), %rsi
    mov 16(%rsp), %rdx
    mov 24(%rsp), %rcx
    mov 32(%rsp), %r8
    mov 40(%rsp), %r9
    mov 48(%rsp), %rax
    movups 64(%rsp), %xmm0
    movups 80(%rsp), %xmm1
    movups 96(%rsp), %xmm2
    movups 112(%rsp), %xmm3
    movups 128(%rsp), %xmm4
    movups 144(%rsp), %xmm5
    movups 160(%rsp), %xmm6
    movups 176(%rsp), %xmm7
    leave
  .endm
  .globl objc_msgSend, objc_msgSend_stret, objc_msgSendSuper2, objc_msgSendSuper2_stret
objc_msgSend:
    test %rdi, %rdi
    jz 1f
    PUT_ASIDE
    call kelvaneMethodFor
    TAKE_BACK
    jmp *%r11
1:  xor %eax, %eax
    xor %edx, %edx
    xorps %xmm0, %xmm0
    xorps %xmm1, %xmm1
    ret
objc_msgSend_stret:
    test %rsi, %rsi
    jz 2f
    PUT_ASIDE
    mov %rsi, %rdi
    mov %rdx, %rsi
    call kelvaneMethodFor
    TAKE_BACK
    jmp *%r11
2:  mov %rdi, %rax
    ret
objc_msgSendSuper2:
    PUT_ASIDE
    call kelvaneSuperMethodFor
    TAKE_BACK
    mov (%rdi), %rdi
    jmp *%r11
objc_msgSendSuper2_stret:
    PUT_ASIDE
    mov %rsi, %rdi
    mov %rdx, %rsi
    call kelvaneSuperMethodFor
    TAKE_BACK
    mov (%rsi), %rsi
    jmp *%r11
  .section .note.GNU-stack,"",@progbits
  .text
)");
