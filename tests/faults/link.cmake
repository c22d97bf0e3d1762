# The link: scripts on a line in memory, real ports on pseudo-terminals, and a day of live display.
kvo_fault_program(link_scripts link)
if(UNIX AND NOT APPLE)
    kvo_fault_program(live_day link)
    if(KVO_QT)
        kvo_fault_program(link_terminal link platform_qt)
        kvo_fault_program(link_unplug link platform_qt)
    endif()
endif()
