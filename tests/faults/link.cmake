# The link: scripts on a line in memory, and real ports on pseudo-terminals.
kvo_fault_program(link_scripts link)
