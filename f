Reserved2=007

X=7
;
Reserved1=0000000000000001
PortRange=53,40, 9 - 17 ,42-54,48,1,46,58-64,51,59,6-6,,40,53,34,14,59-59,38-48,44-49,57-66,45,53--62
PortType=7
FQN=B
PortType=3z
Version=4294967296
Reserved3=80
;
;
fqn=bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb
PortRange=4
fqn=A
Reserved3=4294967296
Reserved1= 5 
;
Reserved2= 5 
Reserved3=2147483648
Reserved3=0000000000000001
X=-2147483649
Reserved3=-2
;
fqn=bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb
Reserved2=1
X=x
Reserved3= 5 
;FQN=[0m

Reserved2=4294967295
Version=2

Version=
FQN=bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb
;
UPID=
Reserved2=
Reserved1=4294967296
PortType=1
UPID=4294967296
;
