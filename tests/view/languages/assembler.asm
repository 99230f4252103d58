; 検索した行を数える。don't call it twice
%define LIMIT 100h
        section .data
title:  db      "件数 ; ", 0
quote   equ     '"'             ; one character
        section .text
        global  count_lines

/* 複数行の
   コメント: mov eax, "x" */
count_lines:
        push    rbp
        mov     rbp, rsp
        xor     eax, eax
.next:
        movzx   ecx, byte [rdi]
        cmp     cl, 0Ah
        jne     .skip           ; "quoted" ret
        inc     eax
.skip:
        inc     rdi
        cmp     rdi, LIMIT
        JB      .next
        movdqa  xmm0, [rsi + 16]
        mov     ebx, 0x1F
        call    print_title
        pop     rbp
        ret
