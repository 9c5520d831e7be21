# Shows Doxygen a header as its readers take it: a comment stands for every declaration up to the
# next empty line, and the comment of a named group for those members that have no other.

/^ *\/\/\/ *@name/ { group = ""; naming = 1; print; next }
/^ *\/\/\/ *@\{/ { naming = 0; comment = ""; print $0 "\n"; next }
/^ *\/\/\/ *@\}/ { group = comment = ""; print; next }
/^ *\/\/\// && naming { group = group $0 "\n"; print; next }
/^ *\/\/\// {  # printed before what it stands for
  comment = (commenting ? comment : "") $0 "\n"
  commenting = 1
  next
}
/^ *$/ { comment = ""; commenting = naming = 0; print; next }

# A declaration begins at the level of the file or of a member, unless it goes on from a line before.
{
  commenting = 0
  match($0, /[^ ]/)
  if (RSTART <= 3 && !continues && !/^ *(\/\/|#|}|public:|private:|protected:)/) {
    printf "%s", comment != "" ? comment : group
  }
  if (!/^ *(\/\/|#)/) continues = !/[;{}:]( *\/\/.*)?$/
  print
}
