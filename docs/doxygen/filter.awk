# Shows Doxygen a header as its readers take it: a comment stands for every declaration up to the
# next empty line, the comment of a named group for those before its first empty line.

BEGIN { print "/// @file" }

/^ *\/\/\/ *@name/ { group = ""; naming = 1; print; next }
/^ *\/\/\/ *@\{/ { comment = naming ? group : ""; naming = commenting = 0; print $0 "\n"; next }
/^ *\/\/\/ *@\}/ { comment = ""; print; next }
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
  if (RSTART <= 3 && !continues && !/^ *(\/\/|#|}|public:|private:|protected:)/) printf "%s", comment
  if (!/^ *(\/\/|#)/) continues = !/[;{}:]( *\/\/.*)?$/
  if (RSTART == 1 && /^(class|struct|template|enum).*{$/ || /^ *(public|private|protected):/) comment = ""
  print
}
