kvo_fault_program(no_memory graph library)
