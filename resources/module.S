/* The compiled resources, as bytes of the library. */
    .section .rodata
    .balign 16
    .globl zquiResources
    .globl zquiResourcesEnd
    .hidden zquiResources
    .hidden zquiResourcesEnd
zquiResources:
    .incbin "zqui.res"
zquiResourcesEnd:
    .byte 0
    .section .note.GNU-stack, "", @progbits
